// How a solution is bundled with the files that it names.
#include "package/package_archive.h"
#include "project/base/path.h"
#include "project/tree_walk.h"

namespace package {

using project::ProjectElement;

namespace {

/// Adds files under their names relative to the directory of the solution.
class Bundle {
public:
    Bundle(PackageArchive& archive, QString directory)
        : archive_(archive), directory_(std::move(directory)) {}

    /// A file outside the directory, and one that is there already, is left out.
    void add(const QString& path) {
        QString name;
        if (!project::relativePath(directory_, path, name)) return;
        // Relative paths ignore case, the disk does not.
        const bool isInside = !name.isEmpty() && path == directory_ + u'/' + name;
        if (isInside && archive_.fileNamed(name) == nullptr) archive_.addDiskFile(path, name);
    }

    void addNode(ProjectElement& node) {
        const QString fileName = node.attributes.value(project::keys::fileName);
        if (fileName.isEmpty() || fileName.contains(u'$')) return;
        node.resolvePaths(project::commonConfiguration);
        add(node.path.absFilePath());
    }

private:
    PackageArchive& archive_;
    QString directory_;
};

}  // namespace

void PackageArchive::addSolution(ProjectElement* solution, const QString& extraFile) {
    solution->resolvePaths(project::commonConfiguration);
    addDiskFile(solution->path.absFilePath(), solution->path.fileName());
    Bundle bundle(*this, project::Path(solution->path.absFilePath()).dirPath());
    project::forEachElement(*solution, [&](ProjectElement& node) {
        if (&node == solution) return true;
        if (node.isSolution() || node.isFile()) bundle.addNode(node);
        return node.isSolution() || node.isProject() || node.isFolder();
    });
    if (!extraFile.isNull()) bundle.add(project::Path(extraFile).absFilePath());
}

void PackageArchive::packageSolution(ProjectElement* solution, const QString& archivePath,
                                     const QString& extraFile) {
    PackageArchive archive;
    archive.addSolution(solution, extraFile);
    archive.save(archivePath);
}

}  // namespace package
