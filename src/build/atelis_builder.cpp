#include "build/atelis_builder.h"

#include "build/installed_tools.h"
#include "build/process/command_text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <utility>
#include <vector>

namespace build {

using project::resolvedPath;

/// The child process of a worker.
class AtelisBuilder::Tool : public Process {
public:
    explicit Tool(AtelisBuilder& owner) : owner_(owner) {}
    void output(bool isStandardOutput, std::string_view line) override {
        owner_.log_.line(&owner_, isStandardOutput ? LogLine::Output : LogLine::ErrorOutput, line);
    }

private:
    AtelisBuilder& owner_;
};

AtelisBuilder::AtelisBuilder(BuildSystem& engine, BuildLog& log)
    : engine_(engine), log_(log), tool_(std::make_unique<Tool>(*this)) {}

AtelisBuilder::~AtelisBuilder() {
    stop();
}

void AtelisBuilder::reset() {
    stop();
}

void AtelisBuilder::beginStep(ProjectElement*, const QString& title, const QString&, int) {
    closeStep();
    isStepOpen_ = true;
    outputFile_.clear();
    log_.stepBegan(this, title);
}

void AtelisBuilder::endStep(ProjectElement*, const QString&) {
    closeStep();
}

void AtelisBuilder::closeStep() {
    if (std::exchange(isStepOpen_, false)) log_.stepEnded(this);
}

void AtelisBuilder::run(const QString& workingDirectory, const QStringList& arguments,
                        const QString& outputFile) {
    constexpr int turnMilliseconds = 100;
    start(workingDirectory, arguments, outputFile);
    Builder* const self = this;
    while (!finished(nullptr, QString())) waitForAny({&self, 1}, turnMilliseconds);
}

void AtelisBuilder::start(const QString& workingDirectory, const QStringList& arguments,
                          const QString& outputFile) {
    if (engine_.buildTerminated || arguments.isEmpty()) return;
    std::vector<std::string> command;
    for (const QString& argument : arguments) command.push_back(argument.toStdString());
    program_ = command.front();
    command.front() = programToRun(arguments.front()).toStdString();
    const std::string directory = workingDirectory.toStdString();
    log_.line(this, LogLine::Command, commandText(command, directory));
    if (!prepareOutput(resolvedPath(workingDirectory, outputFile))) return;
    isStarted_ = tool_->run(command, false, directory, true, true) != -1;
    if (!isStarted_) startFailure_ = "cannot start " + program_;
}

/// Makes the directory of the output file, and remembers the file as it was before the step's first command
/// for it.
bool AtelisBuilder::prepareOutput(const QString& outputFile) {
    if (outputFile.isEmpty() || outputFile == outputFile_) return true;
    outputFile_ = outputFile;
    outputBefore_ = markOf(outputFile);
    const QString directory = QFileInfo(outputFile).path();
    if (QDir().mkpath(directory)) return true;
    startFailure_ = "cannot make the directory " + directory.toStdString();
    return false;
}

bool AtelisBuilder::finished(ProjectElement*, const QString&) {
    // Told only now, when the run asks on behalf of the step that fails.
    if (!startFailure_.empty()) fail(std::exchange(startFailure_, {}));
    if (!isStarted_) return true;
    if (!tool_->update()) return false;
    isStarted_ = false;
    if (tool_->exitCode() != 0)
        fail(program_ + " failed with exit code " + std::to_string(tool_->exitCode()));
    return true;
}

void AtelisBuilder::fail(const std::string& text) {
    removePartialOutput();
    if (!engine_.buildTerminated) log_.line(this, LogLine::Error, text);
    engine_.buildFailed = true;
    closeStep();
}

AtelisBuilder::FileMark AtelisBuilder::markOf(const QString& path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) return {};
    return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_size};
}

void AtelisBuilder::removePartialOutput() {
    if (!outputFile_.isEmpty() && markOf(outputFile_) != outputBefore_) QFile::remove(outputFile_);
}

void AtelisBuilder::stop() {
    startFailure_.clear();
    if (std::exchange(isStarted_, false)) {
        tool_->stop();
        removePartialOutput();
    }
    closeStep();
}

void AtelisBuilder::say(LogLine kind, const QString& text) {
    log_.line(this, kind, text.toStdString());
}

void AtelisBuilder::error(const QString& text) {
    say(LogLine::Error, text);
}
void AtelisBuilder::warning(const QString& text) {
    say(LogLine::Warning, text);
}
void AtelisBuilder::note(const QString& text) {
    say(LogLine::Note, text);
}
void AtelisBuilder::upToDate(const QString& text) {
    say(LogLine::UpToDate, text);
}
void AtelisBuilder::reason(const QString& text) {
    say(LogLine::Reason, text);
}

void AtelisBuilder::stopAll(std::span<Builder* const> workers) {
    for (Builder* each : workers)
        if (auto* const worker = dynamic_cast<AtelisBuilder*>(each)) worker->tool_->requestStop();
    for (Builder* worker : workers) worker->stop();
}

void AtelisBuilder::waitForAny(std::span<Builder* const> workers, int milliseconds) {
    std::vector<Process*> processes;
    for (Builder* each : workers) {
        const auto* const worker = dynamic_cast<AtelisBuilder*>(each);
        if (!worker || !worker->isStarted_) return;
        processes.push_back(worker->tool_.get());
    }
    if (!processes.empty()) Process::waitForAny(processes, milliseconds);
}

}  // namespace build
