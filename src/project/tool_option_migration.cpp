#include "project/tool_option_migration.h"

#include "project/project_system.h"

#include <QSet>

#include <optional>
#include <utility>

namespace project {

using properties::GenericPropertyClass;
using properties::ToolRow;

namespace {

/// A list of more options is none that a user has typed; it stays as it is.
constexpr qsizetype maxTokens = 2000;

}  // namespace

ToolOptionMigration::ToolOptionMigration(ProjectSystem& engine, ProjectElement& project,
                                         const QString& configuration)
    : engine_(engine), project_(project), configuration_(configuration) {
    for (const ToolRow& tool : properties::toolRows())
        lists_[static_cast<std::size_t>(tool.tool)].before =
            engine.localPropertyValue(&project, engine.schema().tools.*tool.optionList, configuration);
}

void ToolOptionMigration::migrate(const GenericPropertyClass& option, const ToolRow& tool) {
    if (!properties::isStorableKey(option.name)) return;
    List& list = lists_[static_cast<std::size_t>(tool.tool)];
    const properties::PropertyClass& optionList = *(engine_.schema().tools.*tool.optionList);
    if (!std::exchange(list.isCurrent, true)) {
        const QString text = engine_.localPropertyValue(&project_, &optionList, configuration_);
        list.setTokens(text.split(u';', Qt::SkipEmptyParts));
    }
    if (moveOption(option, list, optionList)) list.changed = true;
}

/// Of each option, and of each two neighbours, where it first stands: a switch and its argument are two.
void ToolOptionMigration::List::setTokens(const QStringList& all) {
    tokens = all;
    places.clear();
    if (tokens.size() > maxTokens) return;
    for (const int width : {1, 2}) {
        for (qsizetype place = 0; place + width <= tokens.size(); ++place) {
            const Found found{width, place};
            const QString spelling = tokens.mid(place, width).join(u';');
            if (!places.contains(spelling)) places.insert(spelling, found);
        }
    }
}

bool ToolOptionMigration::moveOption(const GenericPropertyClass& option, List& list,
                                     const properties::PropertyClass& optionList) {
    QSet<QString> seen;
    std::optional<List::Found> first;
    QString value;
    for (const auto& [entry, spelling] : option.options()) {
        const auto place = list.places.constFind(spelling);
        if (place == list.places.constEnd() || seen.contains(spelling)) continue;
        seen.insert(spelling);  // the first entry of a spelling decides
        if (entry.isEmpty() || (first && *first < *place)) continue;
        first = *place;
        value = entry;
    }
    if (!first) return false;
    setOption(option, value);
    QStringList rest = list.tokens;
    rest.remove(first->place, first->width);
    if (rest.isEmpty()) {
        engine_.clearPropertyValue(&project_, &optionList, configuration_);
    } else {
        engine_.setPropertyValue(&project_, &optionList, configuration_, rest.join(u';'));
    }
    list.setTokens(rest);
    return true;
}

/// A file can describe one of the lists itself as an option.
void ToolOptionMigration::setOption(const GenericPropertyClass& option, const QString& value) {
    engine_.setPropertyValue(&project_, &option, configuration_, value);
    for (const ToolRow& tool : properties::toolRows())
        if ((engine_.schema().tools.*tool.optionList)->name == option.name)
            lists_[static_cast<std::size_t>(tool.tool)].isCurrent = false;
}

void ToolOptionMigration::storeBackups() {
    for (const ToolRow& tool : properties::toolRows()) {
        const List& list = lists_[static_cast<std::size_t>(tool.tool)];
        if (list.changed)
            engine_.setPropertyValue(&project_, engine_.schema().tools.*tool.backup, configuration_,
                                     list.before);
    }
}

}  // namespace project
