#include "build/node_step.h"

#include "build/generated_files.h"
#include "build/tool_options.h"

#include <QFileInfo>

namespace build {

NodeStep::NodeStep(const BuildRequest& request, const NodeState& state)
    : request_(request), state_(state), properties_(request.engine, state.node, request.configuration) {}

Target NodeStep::target(const QString& name) const {
    return {name, resolvedPath(projectDirectory(), name)};
}

bool NodeStep::fileExists(const QString& path) const {
    return QFileInfo::exists(path) || (engine().rehearsal && engine().rehearsal->makes(path));
}

bool NodeStep::inputsOlderThan(const Target& target, const QStringList& inputs) const {
    return build::inputsOlderThan(projectDirectory(), target, inputs, log(), engine().rehearsal);
}

bool NodeStep::propertiesUnchangedSince(const Target& target) const {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(*target.time, Qt::UTC);
    return engine().propertiesUnchangedSince(node(), request_.configuration, time, state_.kind,
                                             request_.builder, request_.isQuiet());
}

QString NodeStep::relativeToProject(const QString& file) const {
    return project::relativeFilePath(projectDirectory(), file);
}

void NodeStep::beginStep(const QString& title) const {
    builder().beginStep(node(), title, request_.configuration, 0);
}

void NodeStep::endStep() const {
    builder().endStep(node(), request_.configuration);
}

void NodeStep::beginCheck() const {
    if (!request_.isQuiet()) beginStep(QStringLiteral("Checking ") + quotedName());
}

void NodeStep::endCheck() const {
    if (!request_.isQuiet()) endStep();
}

void NodeStep::endUpToDate(const QString& text) const {
    if (!request_.isQuiet()) builder().upToDate(text);
    endCheck();
}

void NodeStep::clean(const QStringList& files) const {
    if (!request_.builder) return;
    beginStep(QStringLiteral("Cleaning ") + quotedName());
    for (const QString& file : files) removeFile(file);
    endStep();
}

void NodeStep::removeFile(const QString& file) const {
    const QString path = resolvedPath(projectDirectory(), file);
    if (QFileInfo::exists(path))
        builder().run(engine().projectDirectoryOf(node()), {QStringLiteral("rm"), path}, QString());
}

void NodeStep::runStep(const QString& title, const QString& workingDirectory, const QStringList& arguments,
                       const QString& outputFile) const {
    if (arguments.isEmpty()) return;
    beginStep(title);
    builder().run(workingDirectory, arguments, outputFile);
    endStep();
}

bool NodeStep::runAll(const QList<QStringList>& commands, const QString& workingDirectory,
                      const QString& outputFile) const {
    for (const QStringList& command : commands) {
        builder().run(workingDirectory, command, outputFile);
        if (isStopped()) return false;
    }
    return true;
}

MacroTable NodeStep::targetMacros(const Target& target) {
    return {{QStringLiteral("TargetPath"), target.path}, {QStringLiteral("RelTargetPath"), target.name}};
}

bool NodeStep::addObjectMacros(const QStringList& objects, MacroTable& macros) const {
    macros.insert(QStringLiteral("Objects"), quotedList(objects));
    const QString name = properties().expanded(properties().tools().external_objects_file_name);
    if (name.isEmpty()) return true;
    const QString path = resolvedPath(projectDirectory(), name);
    QStringList lines;
    for (const QString& object : objects) lines.append(quotedList({object}));
    if (!writeGeneratedFile(engine(), path, lines)) {
        beginStep(QStringLiteral("Creating Objects File"));
        builder().error(QStringLiteral("Cannot open file: ") + path);
        endStep();
        return false;
    }
    macros.insert(QStringLiteral("ObjectsFilePath"), path);
    macros.insert(QStringLiteral("RelObjectsFilePath"), relativeToProject(path));
    return true;
}

void NodeStep::addToolOptions(QStringList& arguments, std::initializer_list<properties::Tool> tools) const {
    for (const properties::Tool tool : tools)
        addToolDescriptionOptions(engine().toolDescription().options(tool), properties(), arguments,
                                  QString());
}

QString quotedList(const QStringList& texts) {
    QStringList quoted;
    for (const QString& text : texts) quoted.append(u'"' + text + u'"');
    return quoted.join(u' ');
}

}  // namespace build
