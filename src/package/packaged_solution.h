#pragma once

#include <QString>

namespace package {

/// Whom the opening of a packaged solution asks.
class PackagedSolutionHost {
public:
    enum class Answer { Yes, No, Cancel };

    virtual ~PackagedSolutionHost() = default;

    /// A directory, or a null text to cancel. `start` is where a dialog begins.
    virtual QString chooseDirectory(const QString& prompt, const QString& start) = 0;
    /// No is the default.
    virtual Answer askOverwrite(const QString& title, const QString& text) = 0;
    /// A file of `filter`, or a null text to cancel.
    virtual QString chooseSolution(const QString& title, const QString& filter, const QString& start) = 0;
};

/// Unpacks an archive made by `PackageArchive::packageSolution` into a directory that the host names, and
/// answers the path of the solution to load, null when the host cancels. A file whose time is that of its
/// entry is left alone, an older one replaced, and a newer one asked about.
/// Throws support::HException; nothing is written when an entry's name leads out of the directory.
QString openPackagedSolution(const QString& archivePath, PackagedSolutionHost& host);

}  // namespace package
