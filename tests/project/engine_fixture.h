#pragma once

#include "project/standard_project_system.h"

#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

/// What tests of the project engine share: an engine, and a directory for its files.
namespace project_test {

using namespace project;

inline QString q(const char* text) {
    return QString::fromUtf8(text);
}
inline QString q(const std::string& text) {
    return QString::fromStdString(text);
}

class Engine : public StandardProjectSystem {
public:
    Engine() : StandardProjectSystem(QString(), {QStringLiteral("hex")}, QStringLiteral("templates.xml")) {
        projectSystem = this;
    }
    ~Engine() override { projectSystem = nullptr; }
    QStringList baseCodeModelArguments(ProjectElement*, const QString&) override { return {}; }
    QString objectExtension() override { return QStringLiteral(".o"); }
    QString executableExtension() override { return QStringLiteral(".elf"); }
    QString libraryExtension() override { return QStringLiteral(".a"); }
};

class EngineTest : public testing::Test {
protected:
    const PropertyClass* property(const char* key) {
        const PropertyClass* found = engine.schema().find(q(key));
        EXPECT_NE(found, nullptr) << key;
        return found;
    }
    void set(ProjectElement* node, const char* configuration, const char* key, const char* value) {
        engine.setPropertyValue(node, property(key), q(configuration), q(value));
    }
    std::string get(ProjectElement* node, const char* configuration, const char* key) {
        return engine.propertyValue(node, property(key), q(configuration)).toStdString();
    }
    std::string local(ProjectElement* node, const char* configuration, const char* key) {
        return engine.localPropertyValue(node, property(key), q(configuration)).toStdString();
    }
    ProjectElement* newSolution(const char* name = "demo") {
        return engine.newSolution(q(name), directory.path());
    }
    ProjectElement* newProject(const char* name) {
        return engine.newProject(engine.solution(), q(name), QString(), q("Executable"));
    }
    /// A solution below `parent`, as a link makes it.
    ProjectElement* newLink(ProjectElement* parent, const char* name) {
        auto* const link = new ProjectElement(q("solution"));
        link->attributes.insert(keys::name, q(name));
        link->path.setFile(directory.filePath(q(name) + q(".qxProject")));
        link->pathValid = link->isImport = true;
        engine.appendChild(parent, link);
        engine.rebuildProjectMaps();
        return link;
    }
    std::string fileText(const QString& name) {
        QFile file(directory.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    }
    std::string saved(bool sorted) {
        EXPECT_TRUE(engine.saveSolution(engine.solution(), sorted));
        return fileText(engine.solution()->path.fileName());
    }

    QTemporaryDir directory;
    Engine engine;
};

}  // namespace project_test
