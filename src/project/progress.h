#pragma once

#include "build/process/project_system_process.h"

#include <QString>

namespace project {

/// Is told how far a long operation is, and hears of the commands that a load runs. Levels nest: `begin`
/// opens one, `end` closes it. A host shows what it likes; by default nothing is shown.
class Progress : public build::CommandObserver {
public:
    /// `weight` is the share of the level above that this one stands for.
    virtual void begin(const QString& text, int weight);
    virtual void end();
    virtual void setProgress(int current, int total);
    /// What is being done right now.
    virtual void line(const QString& text);

    void commandStarted(std::string_view commandLine) override;
    void commandOutput(bool isStandardOutput, std::string_view line) override;
    void commandIdle() override;
    void commandEnded() override;
};

/// Opens a level of a progress that may be null, and closes it whatever happens.
class ProgressLevel {
public:
    ProgressLevel(Progress* progress, const QString& text, int weight) : progress_(progress) {
        if (progress_) progress_->begin(text, weight);
    }
    ProgressLevel(const ProgressLevel&) = delete;
    ProgressLevel& operator=(const ProgressLevel&) = delete;
    ~ProgressLevel() {
        if (progress_) progress_->end();
    }

private:
    Progress* progress_;
};

}  // namespace project
