#pragma once

#include "build/builder.h"

namespace build {

/// Deletes the files that "rm" commands name, be they read-only or not, and ignores everything else. What
/// can't be deleted is an `error`.
class CleanBuilder : public Builder {
public:
    void beginStep(ProjectElement*, const QString&, const QString&, int) override {}
    void endStep(ProjectElement*, const QString&) override {}
    void run(const QString& workingDirectory, const QStringList& arguments,
             const QString& outputFile) override;
    void start(const QString& workingDirectory, const QStringList& arguments,
               const QString& outputFile) override {
        run(workingDirectory, arguments, outputFile);
    }
    void error(const QString&) override {}
    bool hasDeleted() const { return hasDeleted_; }

private:
    bool hasDeleted_ = false;
};

}  // namespace build
