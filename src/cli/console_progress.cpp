#include "cli/console_progress.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <thread>

namespace cli {

namespace {

constexpr qint64 silentMilliseconds = 500;
constexpr qint64 refreshMilliseconds = 100;

}  // namespace

ConsoleProgress::ConsoleProgress() : isTerminal_(isatty(STDERR_FILENO) != 0) {
    sinceStart_.start();
}

ConsoleProgress::~ConsoleProgress() {
    clear();
}

void ConsoleProgress::begin(const QString& text, int) {
    titles_.push_back(text.toStdString());
    show(titles_.back());
}

void ConsoleProgress::end() {
    titles_.pop_back();
}

void ConsoleProgress::setProgress(int current, int total) {
    if (!titles_.empty())
        show("[" + std::to_string(current) + "/" + std::to_string(total) + "] " + titles_.back());
}

void ConsoleProgress::commandOutput(bool, std::string_view line) {
    clear();
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fputc('\n', stderr);
}

void ConsoleProgress::commandIdle() {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void ConsoleProgress::clear() {
    if (isShown_) std::fputs("\r\033[K", stderr);
    isShown_ = false;
}

void ConsoleProgress::show(const std::string& text) {
    const qint64 now = sinceStart_.elapsed();
    if (!isTerminal_ || now < silentMilliseconds || now < shownAt_ + refreshMilliseconds) return;
    shownAt_ = now;
    isShown_ = true;
    std::fputs(("\r" + text + "\033[K").c_str(), stderr);
}

}  // namespace cli
