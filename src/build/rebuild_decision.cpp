#include "build/rebuild_decision.h"

#include "build/file_time.h"
#include "build/generated_files.h"
#include "project/property_lookup.h"
#include "properties/property_value_group_class.h"

#include <vector>

namespace build {

namespace {

bool isNodeOrAncestor(const ProjectElement* candidate, ProjectElement* node) {
    while (node && node != candidate) node = node->parentElement();
    return node != nullptr;
}

/// Whether what is set in the configuration of the record counts in that of the build.
bool countsFor(const NodeProperties& properties, const QString& changed) {
    return changed == properties.configuration() || changed == project::commonConfiguration ||
           project::inheritedConfigurationsAt(properties.node(), properties.configuration())
               .contains(changed);
}

bool affects(const project::ProjectSystem& engine, const PropertyClass* changed, BuildKind kind) {
    // The class of a tool description may have gone since, and another of its key come with the same file.
    const auto isAffecting = [&](const PropertyClass* each) {
        return engine.schema().affecting(kind).contains(each) ||
               dynamic_cast<const properties::PropertyValueGroupClass*>(each) != nullptr;
    };
    return isAffecting(changed) || isAffecting(engine.schema().find(changed->name));
}

bool isPropertyChanged(const NodeProperties& properties, std::int64_t time, BuildKind kind,
                       const DecisionLog& log) {
    const project::ChangeLog& changes = properties.engine().changeLog();
    if (changes.newestTime() <= time) return false;
    for (const project::ChangeRecord& record : changes) {
        if (record.milliseconds() <= time || !affects(properties.engine(), record.propertyClass(), kind) ||
            !isNodeOrAncestor(record.node(), properties.node()) ||
            !countsFor(properties, record.configuration()))
            continue;
        log.note(record.propertyClass()->shortName + QStringLiteral(" property has changed."));
        return true;
    }
    return false;
}

std::vector<const PropertyClass*> optionFiles(const properties::ToolProperties& tools, BuildKind kind) {
    switch (kind) {
        case BuildKind::CompileC:
        case BuildKind::CompileCpp:
        case BuildKind::Assemble:
            return {tools.c_additional_options_from_file, tools.c_only_additional_options_from_file,
                    tools.cpp_only_additional_options_from_file, tools.asm_additional_options_from_file};
        case BuildKind::Link:
            return {tools.linker_additional_options_from_file};
        default:
            return {};
    }
}

bool isOptionFileNewer(const NodeProperties& properties, std::int64_t time, BuildKind kind,
                       const DecisionLog& log) {
    for (const PropertyClass* propertyClass : optionFiles(properties.tools(), kind)) {
        const QString file = properties.expanded(propertyClass);
        if (file.isEmpty()) continue;
        const QString path = resolvedPath(properties.projectDirectory(), file);
        if (modificationTime(path).value_or(time) <= time) continue;
        log.reason(file + QStringLiteral(" has been modified."));
        return true;
    }
    return false;
}

}  // namespace

bool Target::exists(const DecisionLog& log) {
    time = modificationTime(path);
    if (!time) log.reason(name + QStringLiteral(" does not exist."));
    return time.has_value();
}

bool inputsOlderThan(const QString& directory, const Target& target, const QStringList& inputs,
                     const DecisionLog& log, const Rehearsal* rehearsal) {
    for (const QString& input : inputs) {
        const QString path = resolvedPath(directory, input);
        if (rehearsal && rehearsal->makes(path)) {
            log.reason(input + QStringLiteral(" is made anew."));
            return false;
        }
        const std::optional<std::int64_t> time = modificationTime(path);
        if (!time) {
            log.reason(input + QStringLiteral(" does not exist."));
            return false;
        }
        if (!log.isQuiet() && *time > timeNow())
            log.reason(QStringLiteral("clock skew detected on %1.").arg(input));
        if (wholeSeconds(*time) <= wholeSeconds(*target.time)) continue;
        if (!log.isQuiet())
            log.reason(QStringLiteral("%1 (%2) is later than %3 (%4).")
                           .arg(input, timeText(*time), target.name, timeText(*target.time)));
        return false;
    }
    return true;
}

bool propertiesUnchangedSince(const NodeProperties& properties, std::int64_t time, BuildKind kind,
                              const DecisionLog& log) {
    return !isPropertyChanged(properties, time, kind, log) && !isOptionFileNewer(properties, time, kind, log);
}

}  // namespace build
