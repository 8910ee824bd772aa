#include "project/tool_option_migration.h"

#include "project/project_system.h"

namespace project {

using properties::GenericPropertyClass;
using properties::ToolRow;

namespace {

/// The value of the option that is spelled so, or an empty text.
QString valueOf(const GenericPropertyClass& option, const QString& spelling) {
    for (const auto& [value, text] : option.options())
        if (text == spelling) return value;
    return {};
}

}  // namespace

ToolOptionMigration::ToolOptionMigration(ProjectSystem& engine, ProjectElement& project,
                                         const QString& configuration)
    : engine_(engine), project_(project), configuration_(configuration) {
    for (const ToolRow& tool : properties::toolRows())
        lists_[static_cast<std::size_t>(tool.tool)].before =
            engine.localPropertyValue(&project, engine.schema().tools.*tool.optionList, configuration);
}

void ToolOptionMigration::migrate(const GenericPropertyClass& option, const ToolRow& tool) {
    List& list = lists_[static_cast<std::size_t>(tool.tool)];
    if (!list.before.isEmpty() && moveOption(option, *(engine_.schema().tools.*tool.optionList)))
        list.changed = true;
}

/// An option can be one token of the list, or else two neighbours: a switch and its argument.
bool ToolOptionMigration::moveOption(const GenericPropertyClass& option,
                                     const properties::PropertyClass& list) {
    QStringList tokens =
        engine_.localPropertyValue(&project_, &list, configuration_).split(u';', Qt::SkipEmptyParts);
    for (const qsizetype width : {1, 2}) {
        for (qsizetype place = 0; place + width <= tokens.size(); ++place) {
            const QString value = valueOf(option, tokens.mid(place, width).join(u';'));
            if (value.isEmpty()) continue;
            engine_.setPropertyValue(&project_, &option, configuration_, value);
            tokens.remove(place, width);
            if (tokens.isEmpty()) {
                engine_.clearPropertyValue(&project_, &list, configuration_);
            } else {
                engine_.setPropertyValue(&project_, &list, configuration_, tokens.join(u';'));
            }
            return true;
        }
    }
    return false;
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
