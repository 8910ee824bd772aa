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
    QStringList baseCodeModelArguments(project::ProjectElement* node, const QString& configuration) override;
};

}  // namespace cli
