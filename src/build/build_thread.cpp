#include "build/build_thread.h"

#include "build/process/command_text.h"

#include <QFile>

namespace build {

BuildThread::BuildThread(BuildSystem& engine, const PlanItem& item, Builder& worker, Idler& host)
    : engine_(engine), item_(item), worker_(worker), host_(host), sharedContext_(worker.sharedContext()) {}

// --- Recording ---

void BuildThread::beginStep(ProjectElement* node, const QString& title, const QString& configuration,
                            int count) {
    records_.push_back({Type::BeginStep, node, configuration, title, count});
}

void BuildThread::endStep(ProjectElement* node, const QString& configuration) {
    records_.push_back({Type::EndStep, node, configuration});
}

void BuildThread::run(const QString& workingDirectory, const QStringList& arguments,
                      const QString& outputFile) {
    records_.push_back(
        {.type = Type::Start, .text = workingDirectory, .arguments = arguments, .file = outputFile});
    records_.push_back({.type = Type::Wait});
}

void BuildThread::error(const QString& text) {
    recordText(Type::Error, text);
}
void BuildThread::warning(const QString& text) {
    recordText(Type::Warning, text);
}
void BuildThread::note(const QString& text) {
    recordText(Type::Note, text);
}
void BuildThread::upToDate(const QString& text) {
    recordText(Type::UpToDate, text);
}
void BuildThread::reason(const QString& text) {
    recordText(Type::Reason, text);
}

bool BuildThread::acceptOutput(const QString& path) {
    records_.push_back({.type = Type::AcceptOutput, .file = path});
    return true;
}

void BuildThread::beginProject(ProjectElement* node, const QString& title, const QString& configuration,
                               int stepCount) {
    records_.push_back({Type::BeginProject, node, configuration, title, stepCount});
}

void BuildThread::stepDone(ProjectElement* node, const QString& configuration) {
    records_.push_back({Type::StepDone, node, configuration});
}

void BuildThread::endProject(ProjectElement* node, const QString& configuration) {
    records_.push_back({Type::EndProject, node, configuration});
}

// --- Planning ---

void BuildThread::plan() {
    didWork_ = engine_.buildNode(item_.node, item_.configuration, this, this, item_.flags());
    if (item_.has(BuildFlags::ProjectEnd)) recordPostBuild();
    planned_ = true;
}

bool BuildThread::recordPreBuild() {
    const NodeProperties properties(engine_, item_.node, item_.configuration);
    const auto& general = properties.general();
    const QString command = properties.expanded(general.pre_build_command);
    if (command.isEmpty() || item_.has(BuildFlags::NoTools)) return false;
    const auto isWorkDue = [&] {
        NullBuilder nobody;
        Idler idler;
        return engine_.buildNode(item_.node, item_.configuration, &nobody, &idler,
                                 BuildFlags::NoTools | BuildFlags::Quiet);
    };
    if (!item_.has(BuildFlags::Rebuild) &&
        !properties.reads(general.pre_build_command_control, u"Always Run") && !isWorkDue())
        return false;
    recordUserCommand(QStringLiteral("Pre-Building "), command, general.pre_build_command_wd);
    planned_ = true;
    return true;
}

void BuildThread::recordPostBuild() {
    const NodeProperties properties(engine_, item_.node, item_.configuration);
    const auto& general = properties.general();
    const QString command = properties.expanded(general.post_build_command);
    if (command.isEmpty() || item_.has(BuildFlags::NoTools)) return;
    if (didWork_ || properties.reads(general.post_build_command_control, u"Always Run"))
        recordUserCommand(QStringLiteral("Post-Building "), command, general.post_build_command_wd);
}

void BuildThread::recordUserCommand(const QString& verb, const QString& command,
                                    const project::PropertyClass* workingDirectory) {
    const QString directory =
        NodeProperties(engine_, item_.node, item_.configuration).directory(workingDirectory);
    makeDirectory(engine_, directory);
    beginStep(item_.node, verb + quote(item_.node->elementName()), item_.configuration, 0);
    for (const QStringList& arguments : commandsOf(command, " && ")) run(directory, arguments, QString());
    endStep(item_.node, item_.configuration);
}

// --- Replaying ---

bool BuildThread::pump() {
    if (!planned_) {
        if (item_.has(BuildFlags::ProjectBegin)) return true;
        plan();
    }
    while (!records_.empty()) {
        const Next next = replay(records_.front());
        if (next == Next::PauseBefore) return false;
        if (next == Next::End) {
            host_.endProject(item_.node, item_.configuration);
            records_.clear();
            return true;
        }
        records_.pop_front();
        if (next == Next::PauseBehind) return false;
    }
    if (item_.has(BuildFlags::ProjectEnd)) host_.endProject(item_.node, item_.configuration);
    return true;
}

BuildThread::Next BuildThread::replay(const Record& record) {
    switch (record.type) {
        case Type::BeginStep:
            worker_.beginStep(record.node, record.text, record.configuration, record.count);
            break;
        case Type::EndStep:
            worker_.endStep(record.node, record.configuration);
            break;
        case Type::Start:
            worker_.start(record.text, record.arguments, record.file);
            return Next::PauseBehind;
        case Type::Wait:
            if (!worker_.finished(item_.node, item_.configuration)) return Next::PauseBefore;
            if (engine_.isStopped()) return Next::End;
            break;
        case Type::BeginProject:
            host_.beginProject(record.node, record.text, record.configuration, record.count);
            break;
        case Type::StepDone:
            host_.stepDone(record.node, record.configuration);
            break;
        case Type::EndProject:
            host_.endProject(record.node, record.configuration);
            break;
        case Type::AcceptOutput:
            checkOutput(record.file);
            break;
        case Type::Error:
            worker_.error(record.text);
            failed_ = true;
            break;
        case Type::Warning:
            worker_.warning(record.text);
            break;
        case Type::Note:
            worker_.note(record.text);
            break;
        case Type::UpToDate:
            worker_.upToDate(record.text);
            break;
        case Type::Reason:
            worker_.reason(record.text);
            break;
    }
    return Next::GoOn;
}

void BuildThread::checkOutput(const QString& path) {
    if (worker_.acceptOutput(path)) return;
    QFile::remove(path);
    engine_.buildFailed = true;
}

}  // namespace build
