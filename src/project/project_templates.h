#pragma once

#include "project/load_work.h"
#include "xml/preprocessor.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// Templates of projects: a small language in XML that fills in a project which the solution only names.
namespace project {

class ProjectElement;

/// A file of templates.
class ProjectTemplateFile : public xml::XMLPP2 {
public:
    void warning(const QString& text) override { xml::logWarning(text); }
};

/// Elements by name. Of several of one name the one that was added last is found.
class ProjectTemplateNodeList {
public:
    void add(const QString& name, const xml::XMLElement* element) { entries_.push_back({name, element}); }
    /// To be called when all are added.
    void sort();
    /// Null when there is none.
    const xml::XMLElement* find(const QString& name) const;
    /// Each once, sorted.
    QStringList names() const;

private:
    struct Entry {
        QString name;
        const xml::XMLElement* element;
    };
    std::vector<Entry> entries_;
};

/// The templates of some files, for one load. Files that are missing or malformed have none. The files belong
/// to the object; nothing of them is left in what was expanded.
class ProjectTemplates {
public:
    /// `files` are paths joined by ";", in which "*" and "?" are wildcards. `work` outlives the object.
    /// Throws SolutionLoadError when there is more to read than a load may.
    ProjectTemplates(const QString& files, LoadWork& work);

    const ProjectTemplateNodeList& projectTemplates() const { return projectTemplates_; }
    const ProjectTemplateNodeList& configurationTemplates() const { return configurationTemplates_; }

    /// Fills in `project` from one of `projectTemplates()` for the configurations of those names, which may
    /// be none. Throws SolutionLoadError for what a template links, and when it takes too much work.
    void expandTemplate(ProjectElement& solution, ProjectElement& project,
                        const xml::XMLElement& templateElement, const QStringList& configurations);

private:
    void read(const QString& path);
    void collect(const xml::XMLElement& top);

    LoadWork& work_;
    std::vector<std::unique_ptr<ProjectTemplateFile>> files_;
    ProjectTemplateNodeList projectTemplates_;
    ProjectTemplateNodeList configurationTemplates_;
};

}  // namespace project
