#include "build/link_step.h"

#include "build/generated_files.h"
#include "build/link_inputs.h"
#include "build/process/command_text.h"
#include "build/tool_commands.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace build {

LinkStep::LinkStep(const BuildRequest& request, const NodeState& state)
    : NodeStep(request, state),
      executable_(target(engine().outputFileName(BuildKind::Link, node(), request.configuration, false))) {}

bool LinkStep::build() {
    request().idler.stepDone(node(), request().configuration);
    const bool noUnity = request().has(BuildFlags::NoUnity);
    objects_ = collectObjectFiles(engine(), node(), request().configuration, false, noUnity);
    if (reportDuplicate()) return false;
    const QStringList libraries = collectLibraries(engine(), node(), request().configuration, noUnity);
    addAdditionalInputs();
    beginCheck();
    if (isUpToDate(libraries)) {
        endUpToDate(u'\'' + executable_.name + QStringLiteral("' is up to date"));
        return false;
    }
    endCheck();
    if (properties().isYes(properties().tools().link_dependent_projects)) objects_ += libraries;
    if (request().has(BuildFlags::Clean)) cleanOutputs();
    if (endsAtDecision()) return true;
    preLink();
    if (engine().buildFailed) return true;
    if (!engine().buildTerminated && !link()) return false;
    if (engine().buildFailed) return true;
    if (!engine().buildTerminated && !builder().acceptOutput(executable_.path)) {
        cleanOutputs();
        engine().buildFailed = true;
        return false;
    }
    if (!isStopped()) postLink();
    return true;
}

bool LinkStep::reportDuplicate() const {
    QStringList sorted = objects_;
    std::sort(sorted.begin(), sorted.end());
    const auto duplicate = std::adjacent_find(sorted.constBegin(), sorted.constEnd());
    if (duplicate == sorted.constEnd()) return false;
    if (request().builder) {
        beginStep(QStringLiteral("Checking For Duplicate Object Files"));
        builder().error(QStringLiteral("The object file ") + *duplicate +
                        QStringLiteral(" has been supplied more than once"));
        endStep();
    }
    return true;
}

void LinkStep::addAdditionalInputs() {
    bool anyMissing = false;
    for (const QString& file : engine().additionalLinkerInputs(node(), request().configuration)) {
        if (fileExists(resolvedPath(projectDirectory(), file))) {
            objects_.append(file);
        } else if (request().builder) {
            if (!std::exchange(anyMissing, true))
                beginStep(QStringLiteral("Checking Additional Linker Inputs ") + quotedName());
            builder().warning(file + QStringLiteral(" does not exist."));
        }
    }
    if (anyMissing) endStep();
}

bool LinkStep::isUpToDate(const QStringList& libraries) {
    if (!exists(executable_) || state().rebuild ||
        !inputsOlderThan(executable_, objects_ + libraries + layoutFiles(properties())) ||
        !propertiesUnchangedSince(executable_) || !outputsExist())
        return false;
    QString map;
    if (request().isQuiet() ||
        !engine().mapFileName(node(), request().configuration, executable_.path, map) ||
        QFileInfo::exists(map))
        return true;
    log().reason(map + QStringLiteral(" does not exist."));
    return false;
}

/// Whether the first further output that is there settles the question; the log hears of a missing one.
bool LinkStep::outputsExist() const {
    for (const QString& file : postLinkOutputFiles()) {
        if (QFileInfo::exists(file)) return true;
        if (request().isQuiet()) continue;
        builder().warning(file + QStringLiteral(" does not exist."));
        return false;
    }
    return true;
}

QStringList LinkStep::postLinkOutputFiles() const {
    const auto& tools = properties().tools();
    QStringList files;
    const QString format = outputFormat(properties());
    if (!format.isEmpty()) {
        const project::Path path(executable_.path);
        files.append(path.dirPath() + u'/' + path.baseName() + u'.' + format);
    }
    const QString file = properties().expanded(tools.linker_post_build_command_output_file);
    if (!file.isEmpty())
        files.append(properties().directory(tools.linker_post_build_command_wd) + u'/' + file);
    return files;
}

void LinkStep::cleanOutputs() const {
    QStringList files = QStringList{executable_.path} + postLinkOutputFiles();
    QString map;
    if (engine().mapFileName(node(), request().configuration, executable_.path, map)) files.append(map);
    engine().extraOutputFiles(node(), request().configuration, BuildKind::Link, executable_.path, files);
    clean(files);
}

void LinkStep::preLink() const {
    const auto& tools = properties().tools();
    runStep(QStringLiteral("Pre-link command "), properties().directory(tools.linker_pre_build_command_wd),
            parseCommandLine(properties().expanded(tools.linker_pre_build_command)), QString());
}

bool LinkStep::link() const {
    if (request().engine.rehearsal) rehearse(*request().engine.rehearsal);
    const auto& tools = properties().tools();
    const bool isCpp = properties().isSet(tools.external_cpp_link_command) &&
                       engine().isCppProject(node(), request().configuration);
    const PropertyClass* const command =
        isCpp ? tools.external_cpp_link_command : tools.external_link_command;
    if (properties().isSet(command)) return linkExternally(command);
    engine().runTool(node(), request().configuration, BuildKind::Link, executable_.name, executable_.path,
                     objects_, &builder(), !request().has(BuildFlags::NoDependencyFiles));
    return true;
}

bool LinkStep::linkExternally(const PropertyClass* command) const {
    MacroTable macros = targetMacros(executable_);
    if (!addObjectMacros(objects_, macros)) return false;
    addLinkMacros(macros);
    QStringList arguments = parseCommandLine(properties().expanded(command, macros));
    addToolOptions(arguments, {properties::Tool::Linker});
    runStep(QStringLiteral("Linking ") + quote(project::Path(executable_.name).fileName()),
            projectDirectory(), arguments, executable_.path);
    return true;
}

/// What the commands around a link make beside the executable.
void LinkStep::rehearse(Rehearsal& rehearsal) const {
    for (const QString& file : postLinkOutputFiles()) rehearsal.willMake(file);
    QString map;
    if (engine().mapFileName(node(), request().configuration, executable_.path, map)) rehearsal.willMake(map);
}

void LinkStep::addLinkMacros(MacroTable& macros) const {
    QString file;
    if (engine().mapFileName(node(), request().configuration, executable_.path, file)) {
        macros.insert(QStringLiteral("MapPath"), file);
        macros.insert(QStringLiteral("RelMapPath"), relativeToProject(file));
    }
    const PropertyClass* const options = properties().tools().linker_additional_options;
    macros.insert(QStringLiteral("LinkOptions"), properties().list("", options, true, true).join(u' '));
    if (resolveLinkerScript(properties(), nullptr, file)) {
        macros.insert(QStringLiteral("LinkerScriptPath"), file);
        macros.insert(QStringLiteral("RelLinkerScriptPath"), relativeToProject(file));
    }
}

void LinkStep::postLink() const {
    const auto& tools = properties().tools();
    MacroTable macros = targetMacros(executable_);
    macros.insert(QStringLiteral("PostLinkOutputFilePath"),
                  properties().expanded(tools.linker_post_build_command_output_file));
    const QString text = properties().expanded(tools.linker_post_build_command, macros);
    if (text.isEmpty()) return;
    beginStep(QStringLiteral("Post-link command "));
    const QString directory = properties().directory(tools.linker_post_build_command_wd);
    makeDirectory(engine(), directory);
    for (const QStringList& command : commandsOf(text, " && ")) builder().run(directory, command, QString());
    endStep();
}

}  // namespace build
