#include "build/archive_step.h"

#include "build/link_inputs.h"
#include "build/process/command_text.h"

namespace build {

ArchiveStep::ArchiveStep(const BuildRequest& request, const NodeState& state)
    : NodeStep(request, state),
      library_(target(engine().outputFileName(BuildKind::Archive, node(), request.configuration, false))) {}

bool ArchiveStep::build() {
    request().idler.stepDone(node(), request().configuration);
    objects_ = collectObjectFiles(engine(), node(), request().configuration, false,
                                  request().has(BuildFlags::NoUnity));
    beginCheck();
    if (isUpToDate()) {
        endUpToDate(u'\'' + library_.name + QStringLiteral("' is up to date"));
        return false;
    }
    endCheck();
    if (request().has(BuildFlags::Clean)) cleanOutputs();
    if (endsAtDecision()) return true;
    if (!archive()) return false;
    return isStopped() || postArchive();
}

bool ArchiveStep::isUpToDate() {
    return exists(library_) && !state().rebuild && inputsOlderThan(library_, objects_) &&
           propertiesUnchangedSince(library_);
}

void ArchiveStep::cleanOutputs() const {
    QStringList files{library_.path};
    engine().extraOutputFiles(node(), request().configuration, BuildKind::Archive, library_.path, files);
    clean(files);
}

bool ArchiveStep::archive() const {
    if (properties().isSet(properties().tools().external_archive_command)) return archiveExternally();
    engine().runTool(node(), request().configuration, BuildKind::Archive, library_.name, library_.path,
                     objects_, &builder(), !request().has(BuildFlags::NoDependencyFiles));
    return true;
}

bool ArchiveStep::archiveExternally() const {
    MacroTable macros = targetMacros(library_);
    if (!addObjectMacros(objects_, macros)) return false;
    beginStep(QStringLiteral("Archiving ") + quote(project::Path(library_.name).fileName()));
    const QString text = properties().expanded(properties().tools().external_archive_command, macros);
    if (!runAll(commandsOf(text, "&&"), projectDirectory(), library_.path)) return false;
    endStep();
    return true;
}

bool ArchiveStep::postArchive() const {
    const auto& tools = properties().tools();
    const QString text = properties().expanded(tools.archive_post_build_command, targetMacros(library_));
    const QList<QStringList> commands = commandsOf(text, "&&");
    if (commands.isEmpty()) return true;
    beginStep(QStringLiteral("Post-archive command "));
    if (!runAll(commands, properties().directory(tools.archive_post_build_command_wd), QString()))
        return false;
    endStep();
    return true;
}

}  // namespace build
