#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <optional>

/// Times of files and of the clock, in milliseconds since 1970. The disk is asked afresh on every call, once.
namespace build {

/// When the file was last modified; nothing when it does not exist.
std::optional<std::int64_t> modificationTime(const QString& path);

inline std::int64_t timeNow() {
    return QDateTime::currentMSecsSinceEpoch();
}

/// In whole seconds, by which targets and inputs are compared.
inline std::int64_t wholeSeconds(std::int64_t time) {
    return time >= 0 ? time / 1000 : (time - 999) / 1000;
}

/// The time as a user reads it: "dd.MM.yyyy hh:mm:ss" where he is.
QString timeText(std::int64_t time);

}  // namespace build
