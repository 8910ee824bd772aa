#pragma once

#include "build/builder.h"
#include "build/generated_files.h"
#include "cli/output.h"

#include <string>

namespace cli {

/// Prints the commands of a build, each as a shell would take it, and runs none. A verbose one also prints
/// what each command is for and why it would run, as comments of the shell.
class DryRunBuilder : public build::Builder {
public:
    /// What the commands would make is entered in `rehearsal`. Both outlive the object.
    DryRunBuilder(Output& output, build::Rehearsal& rehearsal, bool isVerbose)
        : output_(output), rehearsal_(rehearsal), isVerbose_(isVerbose) {}
    bool hasFailed() const { return hasFailed_; }

    void beginStep(build::ProjectElement* node, const QString& title, const QString& configuration,
                   int count) override;
    void endStep(build::ProjectElement*, const QString&) override {}
    void run(const QString& workingDirectory, const QStringList& arguments,
             const QString& outputFile) override;
    void start(const QString& workingDirectory, const QStringList& arguments,
               const QString& outputFile) override {
        run(workingDirectory, arguments, outputFile);
    }
    void error(const QString& text) override;
    void warning(const QString& text) override;
    void note(const QString& text) override { remark(text); }
    void upToDate(const QString& text) override { remark(text); }
    void reason(const QString& text) override { remark(text); }

private:
    void remark(const QString& text);

    Output& output_;
    build::Rehearsal& rehearsal_;
    const bool isVerbose_;
    bool hasFailed_ = false;
};

/// The text as one word of a POSIX shell.
std::string shellWord(const std::string& text);

}  // namespace cli
