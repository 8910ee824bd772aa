#include "build/external_build_step.h"

#include "build/process/command_text.h"

namespace build {

bool ExternalBuildStep::build() {
    if (!node()->isProject() || !request().builder) return false;
    const auto& tools = properties().tools();
    const QString name = node()->elementName();
    if (request().has(BuildFlags::Clean))
        runStep(QStringLiteral("Running Clean command ") + name, projectDirectory(),
                parseCommandLine(properties().expanded(tools.external_clean_command)), QString());
    const QStringList command = parseCommandLine(properties().expanded(tools.external_build_command));
    if (isStopped() || request().has(BuildFlags::NoTools) || command.isEmpty()) return false;
    runStep(QStringLiteral("Running Build command ") + name, projectDirectory(), command,
            engine().outputFileName(BuildKind::ExternalBuild, node(), request().configuration, true));
    return true;
}

}  // namespace build
