#pragma once

#include "properties/property_class.h"

#include <QDateTime>
#include <QString>

#include <deque>

namespace project {

class ProjectElement;

/// One change of a stored value. It tells the rebuild decision what has changed since an output was made.
struct ChangeRecord {
    ProjectElement* node;
    const properties::PropertyClass* propertyClass;
    QString configuration;
    QDateTime time;
    QString oldText;  ///< null when nothing was stored
    bool nodeWasModified;
    bool configurationWasModified;
};

/// All changes since the solution was loaded or made, newest last.
using ChangeLog = std::deque<ChangeRecord>;

}  // namespace project
