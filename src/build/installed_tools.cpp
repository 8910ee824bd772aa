#include "build/installed_tools.h"

#include "project/base/macro_engine.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace build {

namespace {

constexpr const char* tools[] = {"cp", "xmlcp", "mkhdr", "chmod", "rm"};

}  // namespace

QString installedToolPath(const QString& program) {
    const bool isTool = std::any_of(std::begin(tools), std::end(tools),
                                    [&](const char* tool) { return program == QLatin1StringView(tool); });
    if (!isTool) return {};
    const QString directory = QStringLiteral("$(AtelisDir)/bin/");
    return (project::macroEngine ? project::macroEngine->expandGlobal(directory) : directory) + program;
}

QString programToRun(const QString& program) {
    const QString installed = installedToolPath(program);
    return !installed.isEmpty() && QFileInfo::exists(installed) ? installed : program;
}

}  // namespace build
