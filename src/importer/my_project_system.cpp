#include "importer/my_project_system.h"

namespace importer {

MyProjectSystem::MyProjectSystem() : StandardProjectSystem(QString(), QStringList(), QString()) {}

QStringList MyProjectSystem::baseCodeModelArguments(project::ProjectElement*, const QString&) {
    return {};
}

void MyProjectSystem::addMacros(project::ProjectElement*, const QString&, project::MacroTable&) {}

}  // namespace importer
