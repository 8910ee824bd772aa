#include "build/process/qtx_process.h"

#include <QTextCodec>

#include <limits>

namespace build {

int QTxProcess::runCapturing(std::span<const std::string> arguments, bool wait,
                             const std::string& workingDirectory, QStringList* outputLines,
                             QStringList* errorLines, const QTextCodec* codec) {
    outputLines_ = outputLines;
    errorLines_ = errorLines;
    codec_ = codec;
    return run(arguments, wait, workingDirectory, wait, wait);
}

void QTxProcess::output(bool isStandardOutput, std::string_view line) {
    QStringList* lines = isStandardOutput ? outputLines_ : errorLines_;
    if (!lines) return;
    static_assert(LineSplitter::maxLine <= std::numeric_limits<int>::max());
    lines->append(codec_ ? codec_->toUnicode(line.data(), static_cast<int>(line.size()))
                         : QString::fromLatin1(line.data(), static_cast<qsizetype>(line.size())));
}

}  // namespace build
