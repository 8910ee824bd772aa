#include "package/package_copier.h"

#include "package/check_sum.h"
#include "package/package_archive.h"
#include "package/target.h"
#include "project/base/path.h"

#include <QFileInfo>

namespace package {

bool PackageCopier::copy(const PackageArchiveFile& file) {
    switch (decide(file)) {
        case Answer::YesToAll:
            remembered_ = Answer::Yes;
            [[fallthrough]];
        case Answer::Yes:
            return write(file);
        case Answer::NoToAll:
            remembered_ = Answer::No;
            [[fallthrough]];
        case Answer::No:
            keep(file);
            return true;
        case Answer::Cancel:
            break;
    }
    host_.inform(QStringLiteral("Package installation cancelled"),
                 QStringLiteral("The package installation was cancelled."));
    return false;
}

QString PackageCopier::placeOf(const PackageArchiveFile& file) const {
    return destination_ + u'/' + pathBelow(file.name());
}

QString PackageCopier::shownPlaceOf(const PackageArchiveFile& file) const {
    return project::Path(destination_ + u'/' + file.name()).normalised();
}

PackageCopier::Answer PackageCopier::decide(const PackageArchiveFile& file) {
    if (file.isDescription()) return Answer::No;
    const std::int64_t diskTime = modificationTime(placeOf(file));
    if (diskTime == file.modifiedSeconds()) return Answer::No;
    if (diskTime < file.modifiedSeconds()) return Answer::Yes;
    if (remembered_ != Answer::Cancel) return remembered_;
    const QString target = shownPlaceOf(file);
    return host_.askOverwrite(
        QStringLiteral("Install Package"),
        QStringLiteral("<p>The file <i>%1</i> exists and is dated later than package file.</p>"
                       "<p>Do you want to overwrite this file?</p>")
            .arg(target),
        target);
}

/// Leaves what is on disk as it is.
void PackageCopier::keep(const PackageArchiveFile& file) {
    const QString place = placeOf(file);
    if (file.isDescription() || !QFileInfo(place).isFile()) return;
    installed_.insert(file.name(), checkSumOfFile(place));
    if (modificationTime(place) > file.modifiedSeconds()) kept_.insert(file.name());
}

bool PackageCopier::write(const PackageArchiveFile& file) {
    CheckSum sum;
    Contents contents([&sum, next = archive_.contents(&file)] {
        const QByteArrayView piece = next();
        sum.add(piece);
        return piece;
    });
    const NewFile newFile{.modified = file.modifiedSeconds(),
                          .creationMode = file.isReadOnly() ? readOnlyMode : writableMode};
    const bool isWritten =
        directory_.target(file.name()).write(newFile, contents) == Target::Fault::None ||
        host_.goOnAfter(QStringLiteral("Package installation error"),
                        QStringLiteral("Cannot create %1 for writing.").arg(shownPlaceOf(file)));
    while (isWritten && !contents.isAtEnd()) contents.advance();  // the sum is that of all of it
    if (isWritten) installed_.insert(file.name(), sum.value());
    return isWritten;
}

}  // namespace package
