#pragma once

#include "build/builder.h"
#include "build/node_properties.h"
#include "properties/tool_description.h"

#include <QString>
#include <QStringList>

#include <string_view>

/// Options for tools that come from files: files of options, and the files that describe tools.
namespace build {

/// The options of an options file, one a line. Lines that begin with "//" or "#" and lines of a "/*" comment
/// are none; neither is a last line without a line feed, nor the beginning of a line of more than 1023 bytes.
/// The text is UTF-8.
QStringList parseOptions(std::string_view text);

/// Appends the options of the file that the property names. A file that can't be read is an error of the
/// builder's, and answers false; no file at all is none.
bool optionsFromFile(const NodeProperties& properties, const PropertyClass* fileProperty, Builder& builder,
                     QStringList& options);

/// Appends what the values of described options stand for on a command line; options of another `variant` are
/// passed over.
void addToolDescriptionOptions(const properties::GenericPropertyClassList& list,
                               const NodeProperties& properties, QStringList& arguments,
                               const QString& variant);

}  // namespace build
