#include "build/build_system.h"

#include "build/dependency_file.h"
#include "build/file_time.h"
#include "build/rebuild_decision.h"
#include "build/tool_commands.h"

#include <QFile>

namespace build {

void BuildSystem::runTool(ProjectElement* node, const QString& configuration, project::BuildKind kind,
                          const QString& targetName, const QString& targetPath, const QStringList& inputs,
                          Builder* builder, bool generateDependencies) {
    if (!node || !builder) return;
    const ToolRequest request{kind, targetName, targetPath, inputs, generateDependencies};
    ToolCommand(*this, node, configuration, request, *builder).run();
}

bool BuildSystem::propertiesUnchangedSince(ProjectElement* node, const QString& configuration,
                                           const QDateTime& time, project::BuildKind kind, Builder* builder,
                                           bool quiet) {
    return build::propertiesUnchangedSince({*this, node, configuration}, time.toMSecsSinceEpoch(), kind,
                                           {builder, quiet});
}

QString BuildSystem::dependencyFileName(ProjectElement* node, const QString& configuration,
                                        const QString& objectName, bool absolute) {
    const NodeProperties properties(*this, node, configuration);
    const QString named = properties.expanded(schema().tools.build_dependency_file_name);
    if (!named.isEmpty()) {
        const QString path = resolvedPath(properties.projectDirectory(), named);
        project::makeDirectoryFor(path);
        return absolute ? path : named;
    }
    const QString name = project::Path(objectName).baseName() + QStringLiteral(".d");
    return absolute ? intermediateFilePath(node, configuration, name)
                    : properties.expanded(schema().general.build_intermediate_directory) + u'/' + name;
}

QStringList BuildSystem::readDependencyFile(ProjectElement* node, const QString& configuration,
                                            const QString& directory, const QString& objectName) {
    QFile file(dependencyFileName(node, configuration, objectName, true));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray text = file.readAll();
    return parseDependencies({text.constData(), static_cast<std::size_t>(text.size())}, directory);
}

QStringList BuildSystem::additionalLinkerInputs(ProjectElement* node, const QString& configuration) {
    QStringList inputs;
    for (const xml::XMLElement* library : propertyGroupElements(node, configuration, "library"))
        inputs.append(expandMacros(node, configuration, QString::fromUtf8(library->attribute("value"))));
    return inputs + propertyValueList(QString(), node, schema().tools.linker_additional_files, configuration,
                                      true, false);
}

ToolOptionList BuildSystem::toolOptions(ToolList) {
    return {};
}

QList<const xml::XMLElement*> BuildSystem::propertyGroupElements(ProjectElement*, const QString&,
                                                                 const QByteArray&) {
    return {};
}

}  // namespace build
