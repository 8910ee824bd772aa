#pragma once

#include <QStringList>

/// Lists of values that several properties and hosts share.
namespace properties {

/// The types that a file can be given.
const QStringList& fileTypes();
/// The types of project.
const QStringList& projectTypes();

/// The colours of flags.
const QStringList& colours();
/// The number of a colour, from 1; 0 for a name that is none.
int colourNumber(const QString& name);

/// The text encodings with "Default" in front, each in the form "name~~heading".
const QStringList& codecsWithHeadings();
/// The names of the text encodings, without "Default".
QStringList codecs();

}  // namespace properties
