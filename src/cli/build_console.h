#pragma once

#include "build/atelis_builder.h"
#include "build/build_log.h"
#include "build/build_system.h"

#include <QString>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// A build as a console shows it. Each step that runs a command is a line with its title, followed by what
/// its tools print; the lines of a step stand together. On a terminal a line at the foot shows the progress,
/// and only steps whose tools print something get lines of their own.
///
/// One step at a time speaks as it goes; the lines of others that run beside it wait until it has ended.
class BuildConsole : public build::BuildLog, public build::Idler {
public:
    /// A step that must wait keeps so many bytes of its tools' output; what is beyond them is cut.
    static constexpr std::size_t maxHeld = std::size_t{8} << 20;

    /// While the console lives, an interrupt of the program ends the build of the engine in order.
    BuildConsole(build::BuildSystem& engine, bool verbose);
    ~BuildConsole() override;

    /// The workers that an interrupt stops.
    void setWorkers(std::vector<build::Builder*> workers) { workers_ = std::move(workers); }
    bool hasFailedStep() const { return hasFailedStep_; }
    bool hasRunCommand() const { return hasRunCommand_; }
    /// Writes what is left, and the last line. False, after a report, when standard output did not take all.
    bool finish(const std::string& lastLine);

    void stepBegan(const void* worker, const QString& title) override;
    void line(const void* worker, build::LogLine kind, std::string_view text) override;
    void stepEnded(const void* worker) override;

    void idle() override;
    void beginProject(build::ProjectElement* node, const QString& title, const QString& configuration,
                      int stepCount) override;
    void stepDone(build::ProjectElement* node, const QString& configuration) override;
    void waitForWorkers(std::span<build::Builder* const> workers) override;

private:
    struct Text {
        bool isProblem;  ///< for standard error
        std::string bytes;
    };
    struct Step {
        std::string title;
        bool isTitleShown = false;
        std::vector<Text> held;
        std::size_t heldBytes = 0;
    };

    void say(const void* worker, Step& step, build::LogLine kind, std::string text);
    static void hold(Step& step, build::LogLine kind, Text text);
    void write(const Text& text);
    void release();
    void showFoot();
    void hideFoot();

    build::BuildSystem& engine_;
    const bool isVerbose_;
    const bool isTerminal_;
    bool hasFailedStep_ = false;
    bool hasRunCommand_ = false;
    bool isFootShown_ = false;
    bool isInterrupted_ = false;
    int stepsDone_ = 0;
    int stepsTotal_ = 0;
    std::string lastTitle_;
    std::map<const void*, Step> steps_;  // those that are open
    const void* speaker_ = nullptr;
    std::vector<Text> waiting_;  // of steps that ended while another spoke
    std::size_t waitingBytes_ = 0;
    std::vector<build::Builder*> workers_;
    std::vector<build::Builder*> lastBusy_;
};

}  // namespace cli
