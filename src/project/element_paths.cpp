// How a node's file name becomes a path, and from where it is taken.
#include "project/project_element.h"
#include "project/project_system.h"

namespace project {

namespace {

/// The last component of a text that needs no normalising to have one, or a null text.
QString plainLastComponent(const QString& fileName) {
    const qsizetype slash = std::max(fileName.lastIndexOf(u'/'), fileName.lastIndexOf(u'\\'));
    QString last = fileName.mid(slash + 1);
    return last.isEmpty() || last == u"." || last == u".." ? QString() : last;
}

QString solutionDirectory(ProjectElement* node) {
    ProjectElement* const solution = node ? node->enclosingSolution() : nullptr;
    return solution ? solution->path.dirPath(true) : QString();
}

bool liesInside(const QString& projectDirectory, const Path& file) {
    const QString directory = file.dirPath(true);
    if (Path(directory) == Path(projectDirectory)) return true;
    QString relative;
    return relativePath(projectDirectory, directory, relative) && !relative.startsWith(u"..");
}

void resolveFile(ProjectElement& node, const QString& configuration) {
    ProjectElement* const project = node.enclosingProject();
    if (project) {
        project->resolvePaths(commonConfiguration);
        node.directory = project->directory;
    } else {
        ProjectElement* const root = projectSystem->solution();
        node.directory = root ? root->path.dirPath(true) : QString();
    }
    QString text = node.attributes.value(keys::fileName);
    node.fileNameHasMacros = text.contains(u'$');
    if (node.fileNameHasMacros) text = projectSystem->expandMacros(project, configuration, text);
    node.resolvedFileName = text;
    node.fileNameIsRelative = !isAbsolutePath(text);
    node.path.setFile(node.fileNameIsRelative ? node.directory + u'/' + text : text);
    node.insideProjectDirectory = liesInside(node.directory, node.path);
    node.pathValid = !node.fileNameHasMacros;
}

void resolveProject(ProjectElement& node) {
    const ProjectElement* const common = node.configurations.value(commonConfiguration);
    const QString& key = projectSystem->schema().general.project_directory->name;
    QString directory = common ? common->attributes.value(key) : QString();
    if (!directory.isEmpty()) directory = projectSystem->expandGlobalMacros(directory);
    if (directory.isEmpty()) {
        directory = solutionDirectory(&node);
    } else if (!isAbsolutePath(directory)) {
        directory = solutionDirectory(&node) + u'/' + directory;
    }
    node.directory = directory;
    node.pathValid = true;
}

void resolveOther(ProjectElement& node) {
    node.path = Path();
    node.directory.clear();
    node.resolvedFileName.clear();
    node.insideProjectDirectory = node.fileNameHasMacros = node.fileNameIsRelative = false;
    node.pathValid = true;
}

}  // namespace

QString ProjectElement::elementName() {
    QString name = attributes.value(keys::name);
    if (!name.isEmpty()) return name;
    const QString* const fileName = attributes.find(keys::fileName);
    if (!fileName) return QStringLiteral("<NULL>");
    if (fileNameHasMacros) return Path(*fileName).fileName();
    // A plain name needs no resolving for its last component; a million files are named when a solution is
    // saved.
    if (!pathValid && (isFile() || isFolder()) && !fileName->contains(u'$')) {
        QString last = plainLastComponent(*fileName);
        if (!last.isNull()) return last;
    }
    resolvePaths(commonConfiguration);
    return path.fileName();
}

void ProjectElement::resolvePaths(const QString& configuration) {
    if (pathValid) return;
    if (isFile() || (isFolder() && attributes.contains(keys::fileName))) {
        resolveFile(*this, configuration);
    } else if (isProject()) {
        resolveProject(*this);
    } else if (!isSolution()) {
        resolveOther(*this);
    }
}

}  // namespace project
