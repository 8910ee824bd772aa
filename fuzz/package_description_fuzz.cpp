// Descriptions of packages and the texts in them: what can be parsed is written and parses to the same again.
#include "package/package_description.h"
#include "package/package_version.h"
#include "support/hexception.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

namespace {

using namespace package;

bool parses(PackageDescriptionFile& description, const QByteArray& text) {
    try {
        description.parse(text, QStringLiteral("x_package.xml"));
        return true;
    } catch (const support::HException&) {
        return false;
    }
}

void checkVersions(const QString& text) {
    const PackageVersion version = PackageVersion::parse(text);
    if (PackageVersion::parse(version.toString()).toString() != version.toString()) __builtin_trap();
    VersionRange::parse(text).contains(systemRelease);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir directory;
    static const QString place = directory.filePath(QStringLiteral("x_package.xml"));
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkVersions(QString::fromUtf8(text));
    PackageDescriptionFile description;
    if (!parses(description, text) || description.isEmpty()) return 0;
    checkVersions(description.attribute("version"));
    description.setInstalledFiles({{QStringLiteral("f"), 1}});
    description.savePackageDescription(place, true);
    QFile file(place);
    PackageDescriptionFile again;
    if (!file.open(QIODevice::ReadOnly) || !parses(again, file.readAll())) __builtin_trap();
    if (again.attributes() != description.attributes() ||
        again.installedFiles() != description.installedFiles())
        __builtin_trap();
    return 0;
}
