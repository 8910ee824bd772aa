#pragma once

#include <QString>

/// Folders whose files are found on the disk and not stored in the solution. Four keys in the attributes of
/// the folder itself describe where they are; a folder that has the first one is dynamic.
namespace project::dynamicFolderKeys {

extern const QString path;     ///< directories to scan, or files; global macros are expanded
extern const QString filter;   ///< wildcards of which a file matches one; an empty list takes every file
extern const QString recurse;  ///< "Yes" goes into subdirectories
extern const QString exclude;  ///< wildcards that neither files nor subdirectories match

}  // namespace project::dynamicFolderKeys
