#pragma once

#include "project/standard_project_system.h"

namespace importer {

/// The importer's project engine: the environment's own, with nothing said for code models and no analyzer.
class MyProjectSystem : public project::StandardProjectSystem {
public:
    MyProjectSystem();
    QStringList baseCodeModelArguments(project::ProjectElement* node, const QString& configuration) override;
    void addMacros(project::ProjectElement* node, const QString& configuration,
                   project::MacroTable& table) override;
};

}  // namespace importer
