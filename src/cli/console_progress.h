#pragma once

#include "project/progress.h"

#include <QElapsedTimer>

#include <string>
#include <vector>

namespace cli {

/// Shows how far a load is: one line at the foot of a terminal, once it lasts. Elsewhere nothing but the
/// output of load commands is shown. All of it goes to standard error.
class ConsoleProgress : public project::Progress {
public:
    ConsoleProgress();
    ~ConsoleProgress() override;
    ConsoleProgress(const ConsoleProgress&) = delete;
    ConsoleProgress& operator=(const ConsoleProgress&) = delete;

    void begin(const QString& text, int weight) override;
    void end() override;
    void setProgress(int current, int total) override;
    void commandOutput(bool isStandardOutput, std::string_view line) override;
    void commandIdle() override;

    /// Takes the line off the terminal.
    void clear();

private:
    void show(const std::string& text);

    bool isTerminal_;
    bool isShown_ = false;
    qint64 shownAt_ = 0;
    QElapsedTimer sinceStart_;
    std::vector<std::string> titles_;
};

}  // namespace cli
