#pragma once

#include "project/engine_fixture.h"
#include "project/tree_walk.h"

#include <QFileInfo>

#include <string>

namespace project_test {

/// Solutions and what they name, as files of the directory of the test.
class SolutionTest : public EngineTest {
protected:
    SolutionTest() { macroEngine = &macros; }
    ~SolutionTest() override { macroEngine = nullptr; }

    QString write(const char* name, const std::string& text) {
        QFile file(directory.filePath(q(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
        return file.fileName();
    }
    /// `body` goes on behind the attributes that every solution has.
    QString writeSolution(const char* name, const std::string& body) {
        return write(name, "<!DOCTYPE Kestrelhaus_Project_File>\n<solution Name=\"" +
                               QFileInfo(q(name)).baseName().toStdString() + "\" target=\"8\" version=\"2\"" +
                               body);
    }
    void load(const char* name, Progress* progress = nullptr, bool checkTarget = true) {
        engine.loadSolution(directory.filePath(q(name)), nullptr, nullptr, progress, checkTarget);
    }

    /// The names of nodes, in brackets what is below each.
    std::string shape(ProjectElement* top = nullptr) {
        std::string text;
        walkElements(
            top ? *top : *engine.solution(),
            [&](ProjectElement& node) { text += node.elementName().toStdString() + "("; },
            [&](ProjectElement&) { text += ")"; });
        return text;
    }

    MacroEngine macros;
};

}  // namespace project_test
