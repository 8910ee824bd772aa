#include "package/package_copier.h"

#include "package/check_sum.h"
#include "package/package_archive.h"
#include "package/target.h"
#include "project/base/path.h"

#include <QFileInfo>

namespace package {

namespace {

constexpr mode_t readOnlyMode = 0444;
constexpr mode_t writableMode = 0666;

}  // namespace

bool PackageCopier::copy(const PackageArchiveFile& file) {
    const QString target = project::Path(destination_ + u'/' + file.name()).normalised();
    switch (decide(file, target)) {
        case Answer::YesToAll:
            remembered_ = Answer::Yes;
            [[fallthrough]];
        case Answer::Yes:
            return write(file, target);
        case Answer::NoToAll:
            remembered_ = Answer::No;
            [[fallthrough]];
        case Answer::No:
            keep(file, target);
            return true;
        case Answer::Cancel:
            break;
    }
    host_.inform(QStringLiteral("Package installation cancelled"),
                 QStringLiteral("The package installation was cancelled."));
    return false;
}

PackageCopier::Answer PackageCopier::decide(const PackageArchiveFile& file, const QString& target) {
    if (file.name().endsWith(descriptionSuffix)) return Answer::No;
    const std::int64_t diskTime = modificationTime(target);
    if (diskTime == file.modifiedSeconds()) return Answer::No;
    if (diskTime < file.modifiedSeconds()) return Answer::Yes;
    if (remembered_ != Answer::Cancel) return remembered_;
    return host_.askOverwrite(
        QStringLiteral("Install Package"),
        QStringLiteral("<p>The file <i>%1</i> exists and is dated later than package file.</p>"
                       "<p>Do you want to overwrite this file?</p>")
            .arg(target));
}

/// Leaves what is on disk as it is.
void PackageCopier::keep(const PackageArchiveFile& file, const QString& target) {
    if (!file.name().endsWith(descriptionSuffix) && QFileInfo(target).isFile())
        installed_.insert(file.name(), checkSumOfFile(target));
}

bool PackageCopier::write(const PackageArchiveFile& file, const QString& target) {
    const QByteArray contents = archive_.readFile(&file);
    const NewFile newFile{.contents = contents,
                          .modified = file.modifiedSeconds(),
                          .creationMode = file.isReadOnly() ? readOnlyMode : writableMode};
    const bool isWritten = Target::below(destination_, file.name()).write(newFile) == Target::Fault::None ||
                           host_.goOnAfter(QStringLiteral("Package installation error"),
                                           QStringLiteral("Cannot create %1 for writing.").arg(target));
    if (isWritten) installed_.insert(file.name(), checkSum(contents));
    return isWritten;
}

}  // namespace package
