#include "build/build_system.h"

#include "build/dependency_file.h"
#include "build/link_inputs.h"
#include "build/planner.h"
#include "build/rebuild_decision.h"
#include "build/tool_commands.h"

namespace build {

bool BuildSystem::buildNode(ProjectElement* node, const QString& configuration, Builder* builder,
                            Idler* idler, std::uint32_t flags) {
    const BuildRequest request{*this, configuration, builder, *idler, flags};
    return Planner(request).build(node);
}

int BuildSystem::countBuildSteps(ProjectElement* node, const QString& configuration, std::uint32_t flags) {
    return countSteps(*this, node, configuration, flags);
}

void BuildSystem::analyzeFile(ProjectElement* node, const QString& configuration, Builder* builder) {
    if (!node || !builder) return;
    const NodeProperties properties(*this, node, configuration);
    const auto& tools = properties.tools();
    const bool isC = fileType(node, configuration) == u"C";
    const QStringList checks =
        properties.list("", isC ? tools.clang_tidy_checks_c : tools.clang_tidy_checks_cpp, false, false);
    node->resolvePaths(configuration);
    QStringList arguments{expandMacros(node, configuration, QStringLiteral("$(CLANGTIDY)")),
                          node->path.absFilePath(),
                          QStringLiteral("-checks=") + checks.join(u','),
                          QStringLiteral("-quiet"),
                          QStringLiteral("--"),
                          QStringLiteral("-x"),
                          isC ? QStringLiteral("c") : QStringLiteral("c++")};
    if (!isC && properties.isYes(tools.cpp_enable_exceptions))
        arguments << QStringLiteral("-fcxx-exceptions") << QStringLiteral("-fexceptions");
    if (!isC && properties.reads(tools.cpp_enable_rtti, u"No")) arguments << QStringLiteral("-fno-rtti");
    arguments += codeModelArguments(node, configuration);
    builder->beginStep(node, QStringLiteral("Analyzing ") + node->elementName(), configuration, 0);
    builder->run(properties.projectDirectory(), arguments, QString());
    builder->endStep(node, configuration);
}

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
    if (!named.isEmpty()) return absolute ? resolvedPath(properties.projectDirectory(), named) : named;
    const QString name = project::Path(objectName).baseName() + QStringLiteral(".d");
    return absolute ? intermediateFilePath(node, configuration, name)
                    : properties.expanded(schema().general.build_intermediate_directory) + u'/' + name;
}

QStringList BuildSystem::readDependencyFile(ProjectElement* node, const QString& configuration,
                                            const QString& directory, const QString& objectName) {
    const QByteArray text = readTextFile(dependencyFileName(node, configuration, objectName, true));
    return parseDependencies({text.constData(), static_cast<std::size_t>(text.size())}, directory);
}

QStringList BuildSystem::additionalLinkerInputs(ProjectElement* node, const QString& configuration) {
    QStringList inputs;
    for (const xml::XMLElement* library : propertyGroupElements(node, configuration, "library"))
        inputs.append(library->text("value"));
    return expandMacroList(node, configuration, inputs) +
           propertyValueList(QString(), node, schema().tools.linker_additional_files, configuration, true,
                             false);
}

void BuildSystem::inputsOfNode(ProjectElement* node, const QString& configuration, bool absolute,
                               bool noUnity, bool withDependencies, QStringList& inputs) {
    if (!node) return;
    switch (classifyNode(node, configuration)) {
        case project::BuildKind::CompileC:
        case project::BuildKind::CompileCpp:
        case project::BuildKind::Assemble:
            inputs += readDependencyFile(node, configuration, absolute ? projectDirectoryOf(node) : QString(),
                                         objectFileName(node, configuration, false));
            break;
        case project::BuildKind::Link:
            inputs += linkInputs(*this, node, configuration, {absolute, noUnity, withDependencies});
            break;
        case project::BuildKind::Archive:
            inputs += collectObjectFiles(*this, node, configuration, absolute, noUnity);
            break;
        default:
            break;
    }
}

}  // namespace build
