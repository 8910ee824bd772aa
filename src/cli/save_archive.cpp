#include "cli/save_archive.h"

#include "package/package_archive.h"
#include "project/base/replacing_file.h"
#include "support/hexception.h"

#include <QString>

namespace cli {

void saveArchive(package::PackageArchive& archive, const std::string& path, int level) {
    const QString output = QString::fromStdString(path);
    if (archive.readsFrom(output)) throw support::HException(path + " belongs to the archive");
    project::ReplacingFile file(output);
    if (!file.open()) throw support::HException("cannot open output file");
    archive.save(file.device().fileName(), level);
    if (!file.commit()) throw support::HException("cannot replace " + path);
}

}  // namespace cli
