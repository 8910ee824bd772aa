#pragma once

#include <QString>

#include <string_view>

namespace build {

/// What a line of a build log is.
enum class LogLine {
    Command,      ///< a command that is started
    Output,       ///< a line of a tool's standard output
    ErrorOutput,  ///< a line of a tool's standard error stream
    Error,
    Warning,
    Note,
    UpToDate,
    Reason,
};

/// Hears what the workers of a build have to tell. `worker` tells them apart: the lines of a step are those
/// of its worker between the step's beginning and its end. Texts are UTF-8, or bytes as a tool gave them.
class BuildLog {
public:
    BuildLog() = default;
    BuildLog(const BuildLog&) = delete;
    BuildLog& operator=(const BuildLog&) = delete;
    virtual ~BuildLog() = default;

    virtual void stepBegan(const void* worker, const QString& title) = 0;
    virtual void line(const void* worker, LogLine kind, std::string_view text) = 0;
    virtual void stepEnded(const void* worker) = 0;
};

}  // namespace build
