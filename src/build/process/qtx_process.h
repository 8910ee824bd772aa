#pragma once

#include "build/process/process.h"

#include <QStringList>

#include <span>
#include <string>
#include <string_view>

class QTextCodec;

namespace build {

/// Gathers the output of a command in lists.
class QTxProcess : public Process {
public:
    /// Like `run`, with both streams captured into the lists when it waits; without waiting nothing is
    /// captured. A null list drops its lines. `codec` decodes the bytes; without one each byte is a
    /// character.
    int runCapturing(std::span<const std::string> arguments, bool wait, const std::string& workingDirectory,
                     QStringList* outputLines, QStringList* errorLines, const QTextCodec* codec);

    void output(bool isStandardOutput, std::string_view line) override;

private:
    QStringList* outputLines_ = nullptr;
    QStringList* errorLines_ = nullptr;
    const QTextCodec* codec_ = nullptr;
};

}  // namespace build
