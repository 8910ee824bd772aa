#pragma once

#include "build/build_system.h"

#include <QObject>
#include <QString>
#include <QStringList>

namespace build {

enum class ExportForm { Script, Makefile };

/// Writes the commands of a build down as text, as a script or as the rules of a makefile. Nothing is run;
/// but the directories of the outputs are made, so that what was written can be run.
class ExportBuilder : public Builder {
public:
    ExportBuilder(BuildSystem& engine, ExportForm form, bool noUnity)
        : engine_(engine), form_(form), noUnity_(noUnity) {}

    /// The text so far, one string a line.
    const QStringList& lines() const { return lines_; }

    void beginStep(ProjectElement* node, const QString& title, const QString& configuration,
                   int count) override;
    void endStep(ProjectElement* node, const QString& configuration) override;
    void run(const QString& workingDirectory, const QStringList& arguments,
             const QString& outputFile) override;
    void start(const QString& workingDirectory, const QStringList& arguments,
               const QString& outputFile) override {
        run(workingDirectory, arguments, outputFile);
    }
    void error(const QString& text) override;
    QObject* sharedContext() override { return &context_; }

private:
    bool isMakefile() const { return form_ == ExportForm::Makefile; }
    void writeRuleHead(ProjectElement* node, const QString& configuration);
    QString program(const QString& name) const;
    QString argument(QString text) const;

    BuildSystem& engine_;
    const ExportForm form_;
    const bool noUnity_;
    QStringList lines_;
    QString currentDirectory_;
    QObject context_;
    ProjectElement* lastNode_ = nullptr;
};

/// The commands of a forced build of the node as a script, with the batch configurations when `batch` is set.
QString exportBuildCommands(BuildSystem& engine, ProjectElement* node, const QString& configuration,
                            bool noUnity, bool batch);

/// The same as a makefile, which belongs in the directory of the node.
QString exportMakefile(BuildSystem& engine, ProjectElement* node, const QString& configuration, bool noUnity);

}  // namespace build
