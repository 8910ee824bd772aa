#pragma once

#include "build/builder.h"
#include "cli/output.h"

namespace cli {

/// Prints the commands of a build, each as a shell would take it, and runs none.
class DryRunBuilder : public build::Builder {
public:
    explicit DryRunBuilder(Output& output) : output_(output) {}
    bool hasFailed() const { return hasFailed_; }

    void beginStep(build::ProjectElement*, const QString&, const QString&, int) override {}
    void endStep(build::ProjectElement*, const QString&) override {}
    void run(const QString& workingDirectory, const QStringList& arguments,
             const QString& outputFile) override;
    void start(const QString& workingDirectory, const QStringList& arguments,
               const QString& outputFile) override {
        run(workingDirectory, arguments, outputFile);
    }
    void error(const QString& text) override;
    void warning(const QString& text) override;

private:
    Output& output_;
    bool hasFailed_ = false;
};

/// The text as one word of a POSIX shell.
std::string shellWord(const std::string& text);

}  // namespace cli
