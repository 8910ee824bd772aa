#include "cli/command_line_engine.h"

namespace cli {

CommandLineEngine::CommandLineEngine() : BuildSystem(QString(), {}, QString()) {}

QString CommandLineEngine::objectExtension() {
    return QStringLiteral(".o");
}

QString CommandLineEngine::libraryExtension() {
    return QStringLiteral(".a");
}

QString CommandLineEngine::executableExtension() {
    return QStringLiteral(".elf");
}

QStringList CommandLineEngine::baseCodeModelArguments(project::ProjectElement*, const QString&) {
    return {};
}

}  // namespace cli
