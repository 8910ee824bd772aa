#pragma once

#include "memory_file.h"
#include "project/standard_project_system.h"

#include <QTemporaryDir>

namespace fuzz {

/// An engine with a solution of one project, for files that describe the project.
class DescriptionEngine : public project::StandardProjectSystem {
public:
    DescriptionEngine() : StandardProjectSystem(QString(), {}, QString()) {
        project::projectSystem = this;
        project::macroEngine = &macros_;
        start();
    }
    QStringList baseCodeModelArguments(project::ProjectElement*, const QString&) override { return {}; }

    /// Begins anew with an empty project.
    void start() {
        closeSolution();
        newSolution(QStringLiteral("s"), directory_.path());
        top = newProject(solution(), QStringLiteral("p"), QString(), QStringLiteral("Executable"));
    }
    void set(const char* key, const QString& value) {
        setPropertyValue(top, schema().find(QString::fromLatin1(key)), project::commonConfiguration, value);
    }

    project::ProjectElement* top = nullptr;

private:
    project::MacroEngine macros_;
    QTemporaryDir directory_;
};

}  // namespace fuzz
