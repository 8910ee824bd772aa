#pragma once

#include "build/build_system.h"
#include "project/base/macro_engine.h"

#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <utility>
#include <vector>

/// What tests of builds share: an engine with a solution in a directory of its own, and a builder that writes
/// down what it is told.
namespace build_test {

using namespace build;
using project::ProjectElement;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

inline QString q(const char* text) {
    return QString::fromUtf8(text);
}

class Engine : public BuildSystem {
public:
    Engine() : BuildSystem(QString(), {}, QString()) { project::projectSystem = this; }
    ~Engine() override { project::projectSystem = nullptr; }
    QStringList baseCodeModelArguments(ProjectElement*, const QString&) override { return {}; }
    QString objectExtension() override { return QStringLiteral(".o"); }
    QString executableExtension() override { return QStringLiteral(".elf"); }
    QString libraryExtension() override { return QStringLiteral(".a"); }
};

/// Writes down every call as a line: "[title]", "]", "run DIR: ARGUMENTS -> OUTPUT", "error: TEXT" and so on.
/// The test directory is written as "@".
class RecordingBuilder : public Builder {
public:
    explicit RecordingBuilder(const QString& directory) : directory_(directory) {}

    void beginStep(ProjectElement*, const QString& title, const QString&, int) override {
        say(u'[' + title + u']');
    }
    void endStep(ProjectElement*, const QString&) override { say(QStringLiteral("]")); }
    void run(const QString& workingDirectory, const QStringList& arguments,
             const QString& outputFile) override {
        QString line = workingDirectory + QStringLiteral(": ") + arguments.join(u'|');
        if (!outputFile.isEmpty()) line += QStringLiteral(" -> ") + outputFile;
        say(line);
        commands.push_back(arguments);
    }
    void start(const QString& workingDirectory, const QStringList& arguments,
               const QString& outputFile) override {
        run(workingDirectory, arguments, outputFile);
    }
    void error(const QString& text) override { say(QStringLiteral("error: ") + text); }
    void warning(const QString& text) override { say(QStringLiteral("warning: ") + text); }
    void note(const QString& text) override { say(QStringLiteral("note: ") + text); }
    void upToDate(const QString& text) override { say(QStringLiteral("up to date: ") + text); }
    void reason(const QString& text) override { say(QStringLiteral("reason: ") + text); }
    bool acceptOutput(const QString&) override { return accepts; }

    std::vector<std::string> lines;
    std::vector<QStringList> commands;
    bool accepts = true;

private:
    void say(QString line) { lines.push_back(line.replace(directory_, QStringLiteral("@")).toStdString()); }

    QString directory_;
};

class BuildTest : public testing::Test {
protected:
    BuildTest() {
        macros.systemMacros.insert(QStringLiteral("AtelisDir"), QStringLiteral("/opt/atelis"));
        project::macroEngine = &macros;
        engine.newSolution(q("demo"), directory.path());
        engine.createConfiguration(engine.solution(), debug);
        engine.createConfiguration(engine.solution(), q("Release"));
    }
    ~BuildTest() override { project::macroEngine = nullptr; }

    /// A project in the directory of the solution.
    ProjectElement* newProject(const char* name, const char* type) {
        return engine.newProject(engine.solution(), q(name), directory.path(), q(type));
    }
    ProjectElement* addFile(ProjectElement* parent, const char* name) {
        return engine.addFile(parent, q(name));
    }
    void set(ProjectElement* node, const char* key, const char* value, const char* configuration = "Common") {
        const auto* const propertyClass = engine.schema().find(q(key));
        ASSERT_NE(propertyClass, nullptr) << key;
        engine.setPropertyValue(node, propertyClass, q(configuration), q(value));
    }
    QString path(const char* name) const { return directory.filePath(q(name)); }
    void write(const char* name, const char* text = "") {
        project::makeDirectoryFor(path(name));
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    std::string read(const char* name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "<no file>";
    }
    bool exists(const char* name) const { return QFile::exists(path(name)); }
    /// Writes a file that was last modified so many seconds from now.
    void writeAt(const char* name, int seconds, const char* text = "") {
        write(name, text);
        const timespec time{::time(nullptr) + seconds, 0};
        const timespec times[] = {time, time};
        ASSERT_EQ(::utimensat(AT_FDCWD, path(name).toStdString().c_str(), times, 0), 0);
    }
    /// Plans the node and answers what its builder was told.
    std::vector<std::string> plan(ProjectElement* node, std::uint32_t flags = 0) {
        RecordingBuilder builder(directory.path());
        Idler idler;
        didWork = engine.buildNode(node, debug, &builder, &idler, flags);
        commands = builder.commands;
        return builder.lines;
    }

    const QString debug = QStringLiteral("Debug");
    QTemporaryDir directory;
    project::MacroEngine macros;
    Engine engine;
    bool didWork = false;
    std::vector<QStringList> commands;
};

}  // namespace build_test
