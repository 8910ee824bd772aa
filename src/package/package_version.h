#pragma once

#include <QString>

namespace package {

/// A version: major and minor number and patch, -1 meaning not given.
///
/// As text, numbers separated by "."; a lower-case letter behind the second number is the patch, "a" being 1,
/// otherwise a third number is. What is no number counts as not given, with all behind it.
struct PackageVersion {
    static PackageVersion parse(const QString& text);

    bool isSet() const { return major >= 0; }
    /// With the minor number in at least two digits and the patch as a letter: 5.68, 5.03b.
    QString toString() const;

    int major = -1;
    int minor = -1;
    int patch = -1;
};

/// Below, at or above 0 as `a` is less than, equal to or greater than `b`. Where a number is not given on
/// either side, the two are equal, whatever stands behind it.
int compare(const PackageVersion& a, const PackageVersion& b);

/// The versions from `low` to `high`, either of which may be open. As text: one version, which is both, or
/// LOW-HIGH, where a side may be empty.
struct VersionRange {
    static VersionRange parse(const QString& text);

    bool contains(const PackageVersion& version) const;
    /// For messages: "5.40 or later".
    QString toString() const;

    PackageVersion low;
    PackageVersion high;
};

/// The release of this system.
inline constexpr PackageVersion systemRelease{5, 68, -1};

}  // namespace package
