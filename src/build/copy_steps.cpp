#include "build/copy_steps.h"

#include "build/generated_files.h"
#include "build/link_inputs.h"
#include "build/process/command_text.h"

#include <QFileInfo>

namespace build {

CopyStep::CopyStep(const BuildRequest& request, const NodeState& state)
    : NodeStep(request, state),
      output_(target(engine().outputFileName(state.kind, node(), request.configuration, false))) {}

bool CopyStep::make(const Texts& texts, const MacroTable& macros) const {
    if (request().has(BuildFlags::Clean) && hasOutput() && QFileInfo::exists(output_.path))
        clean({output_.path});
    if (endsAtDecision()) return true;
    beginStep(QString::fromLatin1(texts.title) + quotedName());
    const QString directory = properties().directory(texts.workingDirectory);
    makeDirectory(engine(), directory);
    const QList<QStringList> commands = commandsOf(properties().expanded(texts.command, macros), "&&");
    if (commands.isEmpty()) {
        if (!request().isQuiet()) builder().upToDate(QStringLiteral("nothing to do"));
        endStep();
        return false;
    }
    if (!runAll(commands, directory, output_.path)) return false;
    const QString readonly = properties().value(texts.setReadonly);
    if (hasOutput() && readonly != u"Don't") {
        const QString mode = readonly == u"Yes" ? QStringLiteral("-w") : QStringLiteral("+w");
        builder().run(directory, {QStringLiteral("chmod"), mode, output_.path}, output_.path);
    }
    endStep();
    return true;
}

bool StageStep::build() {
    request().idler.stepDone(node(), request().configuration);
    beginCheck();
    if (isUpToDate()) {
        endUpToDate(u'\'' + output_.name + QStringLiteral("' is up to date."));
        return false;
    }
    endCheck();
    const auto& general = properties().general();
    return make({"Copying ", general.stage_command, general.stage_command_wd, general.stage_set_readonly},
                {{QStringLiteral("StageOutputFilePath"), output_.path}});
}

bool StageStep::isUpToDate() {
    node()->resolvePaths(request().configuration);
    return hasOutput() && exists(output_) && !state().rebuild &&
           inputsOlderThan(output_, {resolvedPath(projectDirectory(), node()->resolvedFileName)}) &&
           propertiesUnchangedSince(output_);
}

bool StageProjectStep::build() {
    const auto& general = properties().general();
    const QStringList command = parseCommandLine(properties().expanded(general.stage_post_build_command));
    if (command.isEmpty() || !state().rebuild) return state().rebuild;
    if (!endsAtDecision())
        runStep(QStringLiteral("Post-stage command"),
                properties().directory(general.stage_post_build_command_wd), command, QString());
    return true;
}

bool CombineStep::build() {
    request().idler.stepDone(node(), request().configuration);
    const QStringList inputs = collectCombineInputs(engine(), node(), request().configuration);
    beginCheck();
    if (isUpToDate(inputs)) {
        endUpToDate(u'\'' + output_.name + QStringLiteral("' is up to date"));
        return false;
    }
    endCheck();
    const auto& general = properties().general();
    return make(
        {"Combining ", general.combine_command, general.combine_command_wd, general.combine_set_readonly},
        {{QStringLiteral("CombiningOutputFilePath"), output_.path},
         {QStringLiteral("CombiningRelInputPaths"), quotedList(inputs)}});
}

bool CombineStep::isUpToDate(const QStringList& inputs) {
    return hasOutput() && exists(output_) && !state().rebuild && inputsOlderThan(output_, inputs) &&
           propertiesUnchangedSince(output_) &&
           inputsOlderThan(output_, engine().readDependencyFile(node(), request().configuration,
                                                                projectDirectory(), output_.name));
}

}  // namespace build
