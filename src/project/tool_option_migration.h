#pragma once

#include "project/project_element.h"
#include "properties/tool_description.h"

#include <QString>

#include <array>

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
        QString before;
        bool changed = false;
    };

    bool moveOption(const properties::GenericPropertyClass& option, const properties::PropertyClass& list);

    ProjectSystem& engine_;
    ProjectElement& project_;
    const QString& configuration_;
    std::array<List, properties::toolCount> lists_;
};

}  // namespace project
