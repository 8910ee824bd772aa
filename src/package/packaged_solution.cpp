#include "package/packaged_solution.h"

#include "package/package_archive.h"
#include "package/target.h"
#include "project/base/path.h"

#include <QDir>
#include <QStringList>

namespace package {

namespace {

using Answer = PackagedSolutionHost::Answer;

/// Yes for a file that is missing or older on disk.
Answer decide(const PackageArchiveFile& file, const QString& directory, PackagedSolutionHost& host) {
    const std::int64_t diskTime = modificationTime(directory + u'/' + pathBelow(file.name()));
    if (diskTime == file.modifiedSeconds()) return Answer::No;
    if (diskTime < file.modifiedSeconds()) return Answer::Yes;
    return host.askOverwrite(QStringLiteral("Open Packaged Solution"),
                             directory + u'/' + file.name() +
                                 QStringLiteral(" exists and is dated later than package file - overwrite?"));
}

/// False when the host cancels.
bool unpack(PackageArchive& archive, const QString& directory, PackagedSolutionHost& host) {
    archive.checkNames(directory);
    for (const auto& file : archive.files()) {
        switch (decide(*file, directory, host)) {
            case Answer::Yes:
                archive.extract(file.get(), directory, true);
                break;
            case Answer::No:
                break;
            case Answer::Cancel:
                return false;
        }
    }
    return true;
}

QString findSolution(const QString& directory, PackagedSolutionHost& host) {
    const QStringList solutions = QDir(directory).entryList({QStringLiteral("*.qxProject")}, QDir::Files);
    if (solutions.size() == 1) return directory + u'/' + solutions.first();
    return host.chooseSolution(QStringLiteral("Open Solution"),
                               QStringLiteral("Solution Files (*.qxProject)"), directory);
}

}  // namespace

QString openPackagedSolution(const QString& archivePath, PackagedSolutionHost& host) {
    PackageArchive archive(archivePath);
    const QString directory = host.chooseDirectory(QStringLiteral("Directory for solution"),
                                                   project::Path(archivePath).dirPath(true));
    if (directory.isNull() || !unpack(archive, directory, host)) return {};
    return findSolution(directory, host);
}

}  // namespace package
