#pragma once

#include <QByteArray>

#include <string_view>

/// The inverse of the writer's escaper: "&amp;" and its four fellows, and numeric references of one byte
/// each. What is no reference stands for itself. A byte 0 ends the text.
namespace xml {

/// An attribute's value: every byte else stays as it is.
QByteArray decodedValue(std::string_view text);

/// A text between tags: carriage returns are dropped.
QByteArray decodedText(std::string_view text);

}  // namespace xml
