#include "build/process/project_system_process.h"

#include <cstdlib>

namespace build {

namespace {

void enterInEnvironment(std::span<const std::string> environment) {
    for (const std::string& entry : environment) {
        const std::size_t equals = entry.find('=');
        if (equals != std::string::npos)
            ::setenv(entry.substr(0, equals).c_str(), entry.c_str() + equals + 1, 1);
    }
}

std::string joined(std::span<const std::string> arguments) {
    std::string text;
    for (const std::string& argument : arguments)
        text += (&argument == arguments.data() ? "" : " ") + argument;
    return text;
}

}  // namespace

ProjectSystemProcess::ProjectSystemProcess(CommandObserver* observer, std::span<const std::string> arguments,
                                           const std::string& workingDirectory,
                                           std::span<const std::string> environment)
    : observer_(observer) {
    enterInEnvironment(environment);
    if (observer_) observer_->commandStarted(joined(arguments));
    result_ = run(arguments, true, workingDirectory, true, true);
    if (observer_) observer_->commandEnded();
}

void ProjectSystemProcess::output(bool isStandardOutput, std::string_view line) {
    if (observer_) observer_->commandOutput(isStandardOutput, line);
}

void ProjectSystemProcess::waitStep() {
    if (observer_) observer_->commandIdle();
}

}  // namespace build
