#pragma once

#include "project/project_element.h"
#include "properties/tool_description.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <array>
#include <tuple>

namespace project {

class ProjectSystem;

/// Moves options of one project and configuration out of the lists in which users put them by hand, into the
/// properties that a tool description has for them. At most one option moves for each class and list.
class ToolOptionMigration {
public:
    /// Remembers the lists as they are.
    ToolOptionMigration(ProjectSystem& engine, ProjectElement& project, const QString& configuration);

    /// Looks for an option of the class in the tool's list.
    void migrate(const properties::GenericPropertyClass& option, const properties::ToolRow& tool);
    /// Stores what the lists were before, where one has changed.
    void storeBackups();

private:
    struct List {
        /// Options of one token come before those of two, and then the first place.
        struct Found {
            int width;
            qsizetype place;
            friend bool operator<(const Found& a, const Found& b) {
                return std::tie(a.width, a.place) < std::tie(b.width, b.place);
            }
        };
        void setTokens(const QStringList& all);

        QString before;
        bool isCurrent = false;  ///< the tokens are what is stored
        bool changed = false;
        QStringList tokens;
        QHash<QString, Found> places;
    };

    bool moveOption(const properties::GenericPropertyClass& option, List& list,
                    const properties::PropertyClass& optionList);
    void setOption(const properties::GenericPropertyClass& option, const QString& value);

    ProjectSystem& engine_;
    ProjectElement& project_;
    const QString& configuration_;
    std::array<List, properties::toolCount> lists_;
};

}  // namespace project
