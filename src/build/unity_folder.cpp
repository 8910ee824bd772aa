#include "build/unity_folder.h"

#include "build/generated_files.h"
#include "project/tree_walk.h"

#include <QRegExp>

#include <algorithm>

namespace build {

namespace {

QList<QRegExp> filtersOf(const NodeProperties& folder) {
    QList<QRegExp> filters;
    const QString text = folder.value(folder.general().unity_build_exclude_filter);
    for (const QString& pattern : text.split(u';', Qt::SkipEmptyParts))
        filters.append(QRegExp(pattern, Qt::CaseSensitive, QRegExp::Wildcard));
    return filters;
}

}  // namespace

UnityFolder readUnityFolder(const NodeProperties& folder) {
    UnityFolder result;
    result.path = folder.projectDirectory() + u'/' + folder.expanded(folder.general().unity_build_file_name);
    const QList<QRegExp> filters = filtersOf(folder);
    const auto isExcluded = [&](ProjectElement& file) {
        file.resolvePaths(folder.configuration());
        return std::any_of(filters.begin(), filters.end(),
                           [&](const QRegExp& filter) { return filter.indexIn(file.resolvedFileName) >= 0; });
    };
    project::forEachElement(*folder.node(), [&](ProjectElement& node) {
        if (!node.isFile()) return node.isFolder();
        const NodeProperties file(folder.engine(), &node, folder.configuration());
        if (file.reads(file.general().build_exclude_from_build, u"No"))
            (isExcluded(node) ? result.excluded : result.members).append(&node);
        return false;
    });
    return result;
}

void writeUnityFile(const BuildSystem& engine, const UnityFolder& folder, const QString& configuration) {
    QStringList lines;
    for (ProjectElement* member : folder.members) {
        member->resolvePaths(configuration);
        lines.append(QStringLiteral("#include \"") + member->path.absFilePath() + u'"');
    }
    writeGeneratedFile(engine, folder.path, lines);
}

}  // namespace build
