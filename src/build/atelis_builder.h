#pragma once

#include "build/build_log.h"
#include "build/build_system.h"
#include "build/process/process.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace build {

/// The worker of a real build: it runs one command at a time as a child process. A command that fails sets
/// `buildFailed` of the engine. Before a command starts, the directory of its output file is made; when it
/// fails or is stopped, what it has written of that file is deleted.
class AtelisBuilder : public Builder {
public:
    /// Both outlive the object.
    AtelisBuilder(BuildSystem& engine, BuildLog& log);
    /// Ends a running command.
    ~AtelisBuilder() override;

    void reset() override;
    void beginStep(ProjectElement* node, const QString& title, const QString& configuration,
                   int count) override;
    void endStep(ProjectElement* node, const QString& configuration) override;
    /// Runs a command and waits for its end.
    void run(const QString& workingDirectory, const QStringList& arguments,
             const QString& outputFile) override;
    void start(const QString& workingDirectory, const QStringList& arguments,
               const QString& outputFile) override;
    bool finished(ProjectElement* node, const QString& configuration) override;
    void error(const QString& text) override;
    void warning(const QString& text) override;
    void note(const QString& text) override;
    void upToDate(const QString& text) override;
    void reason(const QString& text) override;
    void stop() override;

    /// Sleeps until one of the workers has something to tell, at most for the time given. Comes back at once
    /// when one of them runs no command.
    static void waitForAny(std::span<Builder* const> workers, int milliseconds);
    /// Stops all of the workers, in the time of one.
    static void stopAll(std::span<Builder* const> workers);

private:
    class Tool;
    /// By which a file that was written is told from one that was left alone.
    struct FileMark {
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        std::int64_t size = -1;
        friend bool operator==(const FileMark&, const FileMark&) = default;
    };

    static FileMark markOf(const QString& path);
    bool prepareOutput(const QString& outputFile);
    void fail(const std::string& text);
    void removePartialOutput();
    void say(LogLine kind, const QString& text);
    void closeStep();

    BuildSystem& engine_;
    BuildLog& log_;
    std::unique_ptr<Tool> tool_;
    std::string program_;
    QString outputFile_;
    FileMark outputBefore_;
    bool isStarted_ = false;    // a command is still to be asked for its end
    std::string startFailure_;  // why there is none
    bool isStepOpen_ = false;
};

}  // namespace build
