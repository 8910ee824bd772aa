#include "build/export_builder.h"

#include "build/installed_tools.h"
#include "build/link_inputs.h"
#include "build/project_dependencies.h"
#include "project/tree_walk.h"

#include <QDir>
#include <QSet>

#include <vector>

namespace build {

namespace {

/// A name as it stands in the rules of a makefile.
QString ruleName(QString name) {
    return name.replace(u' ', QStringLiteral("\\ "));
}

QString asText(const QStringList& lines) {
    return lines.join(u'\n') + (lines.isEmpty() ? QStringLiteral("") : QStringLiteral("\n"));
}

}  // namespace

void ExportBuilder::beginStep(ProjectElement* node, const QString&, const QString& configuration, int) {
    if (!isMakefile() || !node || lastNode_ == node) return;
    if (lastNode_) lines_.append(QString());
    writeRuleHead(node, configuration);
}

void ExportBuilder::writeRuleHead(ProjectElement* node, const QString& configuration) {
    node->resolvePaths(configuration);
    const QString object = engine_.objectFileName(node, configuration, false);
    const QString head = ruleName(object) + u':' + ruleName(node->resolvedFileName);
    if (node->isFile()) {
        lines_.append(QStringLiteral("-include ") +
                      engine_.dependencyFileName(node, configuration, object, false));
        lines_.append(head);
        return;
    }
    QStringList inputs;
    engine_.inputsOfNode(node, configuration, false, noUnity_, true, inputs);
    lines_.append(inputs.isEmpty() ? head : head + u'\\');
    for (qsizetype i = 0; i < inputs.size(); ++i)
        lines_.append(QStringLiteral("  ") + ruleName(inputs[i]) +
                      (i + 1 < inputs.size() ? QStringLiteral("\\") : QString()));
}

void ExportBuilder::endStep(ProjectElement* node, const QString&) {
    lastNode_ = node;
}

void ExportBuilder::run(const QString& workingDirectory, const QStringList& arguments,
                        const QString& outputFile) {
    if (arguments.isEmpty()) return;
    if (!outputFile.isEmpty()) project::makeDirectoryFor(resolvedPath(workingDirectory, outputFile));
    if (!isMakefile() && workingDirectory != currentDirectory_) {
        lines_.append(QStringLiteral("cd \"") + QDir::toNativeSeparators(workingDirectory) + u'"');
        currentDirectory_ = workingDirectory;
    }
    QString line = isMakefile() ? QStringLiteral("\t") : QString();
    line += program(arguments.front());
    for (qsizetype i = 1; i < arguments.size(); ++i) line += u' ' + argument(arguments[i]);
    lines_.append(line);
}

QString ExportBuilder::program(const QString& name) const {
    const QString installed = installedToolPath(name);
    QString path = installed.isEmpty() ? name : installed;
    if (!path.contains(u' ')) return path;
    return u'"' + (isMakefile() ? path : QDir::toNativeSeparators(path)) + u'"';
}

QString ExportBuilder::argument(QString text) const {
    const bool hasBlank = text.contains(u' ');
    text.replace(u'"', QStringLiteral("\\\""));
    if (isMakefile()) text.replace(u'$', QStringLiteral("$$"));
    return hasBlank ? u'"' + text + u'"' : text;
}

void ExportBuilder::error(const QString& text) {
    lines_.append(QStringLiteral("ERROR occurred ") + text);
}

QString exportBuildCommands(BuildSystem& engine, ProjectElement* node, const QString& configuration,
                            bool noUnity, bool batch) {
    ExportBuilder builder(engine, ExportForm::Script, noUnity);
    Builder* const worker = &builder;
    Idler idler;
    const std::uint32_t flags =
        BuildFlags::Rebuild | BuildFlags::Quiet | (noUnity ? BuildFlags::NoUnity : 0U);
    engine.build(node, configuration, {&worker, 1}, idler, flags, true, batch);
    return asText(builder.lines());
}

namespace {

/// The projects of the node, each behind what it depends on, each once.
class DependencyOrder {
public:
    DependencyOrder(BuildSystem& engine, const QString& configuration)
        : engine_(engine), configuration_(configuration) {}

    void add(ProjectElement* project) {
        enter(project);
        while (!frames_.empty()) {
            Frame& frame = frames_.back();
            if (frame.next < frame.names.size()) {
                ProjectElement* const dependency =
                    engine_.findProject(frame.project, frame.names[frame.next++]);
                if (dependency) enter(dependency);
            } else {
                projects_.append(frame.project);
                frames_.pop_back();
            }
        }
    }
    const QList<ProjectElement*>& projects() const { return projects_; }

private:
    struct Frame {
        ProjectElement* project;
        QStringList names;
        qsizetype next = 0;
    };

    void enter(ProjectElement* project) {
        if (seen_.contains(project)) return;
        seen_.insert(project);
        frames_.push_back({project, dependencyNames({engine_, project, configuration_})});
    }

    BuildSystem& engine_;
    const QString& configuration_;
    std::vector<Frame> frames_;
    QSet<ProjectElement*> seen_;
    QList<ProjectElement*> projects_;
};

QList<ProjectElement*> inDependencyOrder(BuildSystem& engine, ProjectElement* node,
                                         const QString& configuration) {
    DependencyOrder order(engine, configuration);
    if (ProjectElement* const project = node->isSolution() ? nullptr : node->enclosingProject()) {
        order.add(project);
    } else {
        project::forEachElement(*node, [&](ProjectElement& each) {
            if (each.isProject()) order.add(&each);
            return each.isSolution() || each.isFolder();
        });
    }
    return order.projects();
}

/// What "all" stands for in a project: its output, or where it has none, as a staging project, those of its
/// files.
QStringList outputsOf(BuildSystem& engine, ProjectElement* project, const QString& configuration) {
    const QString output = engine.objectFileName(project, configuration, false);
    if (!output.isEmpty() || engine.classifyNode(project, configuration) != BuildKind::Stage) return {output};
    return collectObjectFiles(engine, project, configuration, false, false);
}

}  // namespace

QString exportMakefile(BuildSystem& engine, ProjectElement* node, const QString& configuration,
                       bool noUnity) {
    ExportBuilder builder(engine, ExportForm::Makefile, noUnity);
    Builder* const worker = &builder;
    Idler idler;
    QStringList head{QStringLiteral("all: \\")};
    const std::uint32_t flags =
        BuildFlags::Rebuild | BuildFlags::Quiet | (noUnity ? BuildFlags::NoUnity : 0U);
    for (ProjectElement* project : inDependencyOrder(engine, node, configuration)) {
        engine.build(project, configuration, {&worker, 1}, idler, flags, false, false);
        for (const QString& output : outputsOf(engine, project, configuration))
            head.append(QStringLiteral("  ") + ruleName(output) + u'\\');
    }
    head.append(QString());
    return asText(head + builder.lines());
}

}  // namespace build
