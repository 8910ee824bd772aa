#include "cli/build_console.h"

#include "cli/output.h"

#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <utility>

namespace cli {

namespace {

using build::LogLine;

volatile sig_atomic_t interruptSeen = 0;

void onInterrupt(int) {
    interruptSeen = 1;
}

constexpr std::array interrupts = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE};
std::array<struct sigaction, interrupts.size()> actionsBefore;

/// An interrupt ends the build in order, which takes no longer than commands may take to end; a further one
/// changes nothing, so that no command is left behind. What the program was started to ignore stays ignored.
void catchInterrupts() {
    interruptSeen = 0;
    for (std::size_t i = 0; i < interrupts.size(); ++i) {
        ::sigaction(interrupts[i], nullptr, &actionsBefore[i]);
        if (actionsBefore[i].sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        // Commands are to be ended in order even when nobody reads.
        action.sa_handler = interrupts[i] == SIGPIPE ? SIG_IGN : onInterrupt;
        ::sigaction(interrupts[i], &action, nullptr);
    }
}

void releaseInterrupts() {
    for (std::size_t i = 0; i < interrupts.size(); ++i)
        ::sigaction(interrupts[i], &actionsBefore[i], nullptr);
}

/// The columns of the terminal, or a usual number.
std::size_t terminalWidth() {
    constexpr std::size_t usual = 80;
    winsize size{};
    return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

/// As much of the UTF-8 text as fits into so many columns, one for each character.
std::string_view cutToWidth(std::string_view text, std::size_t width) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool beginsCharacter = (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80;
        if (beginsCharacter && ++columns > width) return text.substr(0, i);
    }
    return text;
}

/// Whether a line is for those who asked for everything.
bool isDetail(LogLine kind) {
    return kind == LogLine::UpToDate || kind == LogLine::Reason;
}

bool isProblem(LogLine kind) {
    return kind == LogLine::Error || kind == LogLine::Warning || kind == LogLine::ErrorOutput;
}

const char* prefixOf(LogLine kind) {
    if (kind == LogLine::Error) return "atelis: error: ";
    return kind == LogLine::Warning ? "atelis: warning: " : "";
}

}  // namespace

BuildConsole::BuildConsole(build::BuildSystem& engine, bool verbose)
    : engine_(engine), isVerbose_(verbose), isTerminal_(::isatty(STDOUT_FILENO) == 1) {
    catchInterrupts();
}

BuildConsole::~BuildConsole() {
    releaseInterrupts();
}

bool BuildConsole::finish(const std::string& lastLine) {
    while (!steps_.empty()) stepEnded(steps_.begin()->first);
    release();
    hideFoot();
    write({false, lastLine + '\n'});
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return true;
    reportError("cannot write the results");
    return false;
}

// --- The log ---

void BuildConsole::stepBegan(const void* worker, const QString& title) {
    Step& step = steps_[worker];
    step.title = printable(title.trimmed().toStdString());
    lastTitle_ = step.title;
    if (isVerbose_) say(worker, step, LogLine::Note, {});  // the title alone
    showFoot();
}

void BuildConsole::line(const void* worker, LogLine kind, std::string_view text) {
    hasFailedStep_ |= kind == LogLine::Error;
    hasRunCommand_ |= kind == LogLine::Command;
    if (isDetail(kind) && !isVerbose_) return;
    const bool isOpen = steps_.count(worker) != 0;
    Step& step = steps_[worker];
    if (kind == LogLine::Command && !isVerbose_) {
        if (!isTerminal_) say(worker, step, kind, {});  // else the foot tells of it
    } else {
        const bool isOurs = kind != LogLine::Output && kind != LogLine::ErrorOutput;
        say(worker, step, kind, prefixOf(kind) + (isOurs ? printable(text) : std::string(text)) + '\n');
    }
    if (!isOpen) stepEnded(worker);  // said outside of any step
}

/// Adds to what the step says, behind its title when a command or a detail is to be told.
void BuildConsole::say(const void* worker, Step& step, LogLine kind, std::string text) {
    const bool problem = isProblem(kind);
    std::vector<Text> texts;
    if ((!problem || isTerminal_) && !step.title.empty() && !std::exchange(step.isTitleShown, true))
        texts.push_back({false, step.title + '\n'});
    if (!text.empty()) texts.push_back({problem, std::move(text)});
    if (!speaker_) {
        speaker_ = worker;
        for (const Text& held : std::exchange(step.held, {})) write(held);
    }
    for (Text& each : texts) {
        if (speaker_ == worker) {
            write(each);
        } else {
            hold(step, kind, std::move(each));
        }
    }
}

/// Keeps a text until the step may speak; of what tools print no more than is allowed.
void BuildConsole::hold(Step& step, LogLine kind, Text text) {
    const bool isOutput = kind == LogLine::Output || kind == LogLine::ErrorOutput;
    if (isOutput) {
        if (step.heldBytes > maxHeld) return;
        step.heldBytes += text.bytes.size();
        if (step.heldBytes > maxHeld)
            text = {true, "atelis: warning: the output of \"" + step.title + "\" is cut\n"};
    }
    step.held.push_back(std::move(text));
}

void BuildConsole::stepEnded(const void* worker) {
    const auto step = steps_.find(worker);
    if (step == steps_.end()) return;
    std::move(step->second.held.begin(), step->second.held.end(), std::back_inserter(waiting_));
    waitingBytes_ += step->second.heldBytes;
    steps_.erase(step);
    if (speaker_ == worker) speaker_ = nullptr;
    if (!speaker_ || waitingBytes_ > maxHeld) release();
}

/// Writes what waits: when nobody speaks, or when it has become too much to wait any longer.
void BuildConsole::release() {
    waitingBytes_ = 0;
    for (const Text& text : std::exchange(waiting_, {})) write(text);
    std::fflush(stdout);
    showFoot();
}

void BuildConsole::write(const Text& text) {
    hideFoot();
    if (text.isProblem) std::fflush(stdout);
    std::fwrite(text.bytes.data(), 1, text.bytes.size(), text.isProblem ? stderr : stdout);
}

// --- Progress ---

void BuildConsole::beginProject(build::ProjectElement*, const QString&, const QString&, int stepCount) {
    stepsTotal_ += stepCount;
}

void BuildConsole::stepDone(build::ProjectElement*, const QString&) {
    ++stepsDone_;
    showFoot();
}

void BuildConsole::showFoot() {
    if (!isTerminal_ || lastTitle_.empty()) return;
    const std::string foot =
        '[' + std::to_string(stepsDone_) + '/' + std::to_string(stepsTotal_) + "] " + lastTitle_;
    const std::string_view shown = cutToWidth(foot, terminalWidth() - 1);
    std::fprintf(stdout, "\r\033[K%.*s", static_cast<int>(shown.size()), shown.data());
    std::fflush(stdout);
    isFootShown_ = true;
}

void BuildConsole::hideFoot() {
    if (std::exchange(isFootShown_, false)) std::fputs("\r\033[K", stdout);
}

// --- Time ---

void BuildConsole::idle() {
    if (!interruptSeen || std::exchange(isInterrupted_, true)) return;
    engine_.terminateBuild();
    build::AtelisBuilder::stopAll(workers_);
}

void BuildConsole::waitForWorkers(std::span<build::Builder* const> workers) {
    constexpr int turnMilliseconds = 200;
    idle();
    // Only when the run comes round with the same workers busy has it nothing else to start.
    const bool isSame = std::equal(workers.begin(), workers.end(), lastBusy_.begin(), lastBusy_.end());
    lastBusy_.assign(workers.begin(), workers.end());
    if (!isSame) return;
    std::fflush(stdout);
    build::AtelisBuilder::waitForAny(workers, turnMilliseconds);
}

}  // namespace cli
