#pragma once

#include "build/build_system.h"

namespace cli {

/// The project engine of the command line. Its tool chain names files as Unix tools do.
class CommandLineEngine : public build::BuildSystem {
public:
    CommandLineEngine();
    QString objectExtension() override;
    QString libraryExtension() override;
    QString executableExtension() override;
    /// The file in which a link or an archive finds its inputs.
    void extraOutputFiles(project::ProjectElement* node, const QString& configuration,
                          project::BuildKind kind, const QString& target, QStringList& out) override;
    /// Reads the tool descriptions of all projects, and takes the options that they move out of old lists for
    /// ones that have always stood where they go: nobody has changed them since the outputs were made.
    void settleToolDescriptions(const QString& configuration);
    QStringList baseCodeModelArguments(project::ProjectElement* node, const QString& configuration) override;
};

}  // namespace cli
