#include "package/package_version.h"

#include <QStringList>

#include <algorithm>

namespace package {

namespace {

constexpr int lastLetterPatch = 26;

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

bool isLetter(QChar character) {
    return character >= u'a' && character <= u'z';
}

int parseNumber(const QString& text) {
    const bool isNumber = !text.isEmpty() && std::all_of(text.begin(), text.end(), isDigit);
    bool fits = false;
    const int number = isNumber ? text.toInt(&fits) : 0;
    return fits ? number : -1;
}

QString patchText(int patch) {
    if (patch > lastLetterPatch) return u'.' + QString::number(patch);
    return patch >= 1 ? QString(QChar(u'a' + patch - 1)) : QString();
}

}  // namespace

PackageVersion PackageVersion::parse(const QString& text) {
    QStringList parts = text.trimmed().split(u'.');
    PackageVersion version;
    version.major = parseNumber(parts[0]);
    if (version.major < 0 || parts.size() == 1) return version;
    const bool hasLetter = !parts[1].isEmpty() && isLetter(parts[1].back());
    if (hasLetter) {
        version.patch = parts[1].back().unicode() - u'a' + 1;
        parts[1].chop(1);
    }
    version.minor = parseNumber(parts[1]);
    if (version.minor < 0) version.patch = -1;
    if (version.minor >= 0 && !hasLetter && parts.size() > 2) version.patch = parseNumber(parts[2]);
    return version;
}

QString PackageVersion::toString() const {
    if (!isSet()) return {};
    QString text = QString::number(major);
    if (minor < 0) return text;
    return text + QStringLiteral(".%1").arg(minor, 2, 10, QChar(u'0')) + patchText(patch);
}

int compare(const PackageVersion& a, const PackageVersion& b) {
    const int pairs[][2] = {{a.major, b.major}, {a.minor, b.minor}, {a.patch, b.patch}};
    for (const auto& [first, second] : pairs) {
        if (first < 0 || second < 0) return 0;
        if (first != second) return first < second ? -1 : 1;
    }
    return 0;
}

VersionRange VersionRange::parse(const QString& text) {
    const qsizetype dash = text.indexOf(u'-');
    if (dash >= 0) return {PackageVersion::parse(text.left(dash)), PackageVersion::parse(text.mid(dash + 1))};
    const PackageVersion both = PackageVersion::parse(text);
    return {both, both};
}

bool VersionRange::contains(const PackageVersion& version) const {
    if (!low.isSet()) return compare(version, high) <= 0;
    if (!high.isSet()) return compare(version, low) >= 0;
    if (compare(low, high) == 0) return compare(version, low) == 0;
    return compare(version, low) >= 0 && compare(version, high) <= 0;
}

QString VersionRange::toString() const {
    if (!low.isSet()) return high.toString() + QStringLiteral(" or earlier");
    if (!high.isSet()) return low.toString() + QStringLiteral(" or later");
    if (compare(low, high) == 0) return low.toString() + QStringLiteral(" only");
    return low.toString() + QStringLiteral(" to ") + high.toString();
}

}  // namespace package
