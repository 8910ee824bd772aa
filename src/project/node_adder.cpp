#include "project/node_adder.h"

#include "project/base/macro_engine.h"
#include "project/project_system.h"
#include "project/tree_walk.h"

namespace project {

namespace {

/// What is set in the project when a file of a special type is put to use. A null value stands for the file.
struct UseRow {
    const char* type;
    const char* key;
    const char* value;
};

constexpr UseRow useRows[] = {
    {"Section Placement", "link_use_linker_script_file", "No"},
    {"Section Placement", "linker_section_placement_file", nullptr},
    {"Memory Map", "linker_memory_map_file", nullptr},
    {"Linker Script", "link_use_linker_script_file", "Yes"},
    {"Linker Script", "link_linker_script_file", nullptr},
    {"Register Definitions", "debug_register_definition_file", nullptr},
};

bool canBeUsed(const QString& type) {
    for (const UseRow& row : useRows)
        if (type == QLatin1StringView(row.type)) return true;
    return false;
}

/// A name that no child of `target` has.
QString freeName(ProjectSystem& engine, ProjectElement& target, const QString& name) {
    if (!engine.hasChildNamed(&target, name)) return name;
    QSet<QString> taken;
    for (ProjectElement* child = target.firstChildElement(); child; child = child->nextSiblingElement())
        taken.insert(child->elementName());
    QString copy = QStringLiteral("Copy of ") + name;
    for (int number = 2; taken.contains(copy); ++number)
        copy = QStringLiteral("Copy (%1) ").arg(number) + name;
    return copy;
}

}  // namespace

NodeAdder::NodeAdder(ProjectSystem& engine, const QString& configuration, Prompt& prompt,
                     const QStringList& macroNames)
    : engine_(engine), configuration_(configuration), prompt_(prompt), macroNames_(macroNames) {}

ProjectElement* NodeAdder::addExistingFile(ProjectElement& target, const QString& path, bool quiet) {
    if (holdsFile(target, path)) {
        const QString text = QStringLiteral("The file ") + path +
                             QStringLiteral(
                                 " is already in the project.\n\n"
                                 "Do you wish to duplicate this file in the project?");
        if (quiet ||
            !prompt_.ask(QStringLiteral("Project System"), QStringLiteral("File already in project"), text))
            return nullptr;
    }
    ProjectElement* const file = engine_.addFile(&target, storedName(path, target));
    remember(*file);
    offerUse(*file, path);
    return file;
}

QString NodeAdder::storedName(const QString& path, ProjectElement& target) const {
    if (!isAbsolutePath(path)) return path;
    QString text;
    for (const QString& name : macroNames_)
        if (abbreviatePath(name, path, text)) return text;
    return relativeFilePath(directoryOf(target.enclosingProject()), path);
}

void NodeAdder::offerUse(ProjectElement& file, const QString& path) {
    engine_.loadToolDescriptions(&file, configuration_);
    const QString projectType =
        engine_.propertyValue(&file, engine_.schema().general.project_type, configuration_);
    if (projectType != u"Executable" && projectType != u"Externally Built Executable") return;
    const QString type = engine_.fileType(&file, configuration_);
    ProjectElement* const project = file.enclosingProject();
    if (!project || !canBeUsed(type)) return;
    const QString lowerType = type.toLower();
    const QString text = QStringLiteral("The file ") + path + QStringLiteral(" is a ") + lowerType +
                         QStringLiteral(" file.\n\nDo you want to use this ") + lowerType +
                         QStringLiteral(" for the current build configuration?");
    if (!prompt_.ask(QStringLiteral("Project System"), type + QStringLiteral(" File Detected"), text)) return;
    for (const UseRow& row : useRows) {
        if (type != QLatin1StringView(row.type)) continue;
        engine_.setPropertyValue(
            project, engine_.schema().find(QString::fromLatin1(row.key)), configuration_,
            row.value ? QString::fromLatin1(row.value) : file.attributes.value(keys::fileName));
    }
}

ProjectElement* NodeAdder::pasteNode(const ProjectElement& source, const QString& sourceDirectory,
                                     ProjectElement& target) {
    std::unique_ptr<ProjectElement> copy = source.deepCopy();
    if (copy->isFile()) return pasteFile(std::move(copy), sourceDirectory, target);
    const QString name = freeName(engine_, target, copy->elementName());
    engine_.setElementAttribute(copy.get(), keys::name, name);
    files_.clear();  // the copy can bring files
    ProjectElement* const pasted = copy.release();
    engine_.appendChild(&target, pasted);
    if (pasted->isProject() || pasted->isSolution()) engine_.rebuildProjectMaps();
    return pasted;
}

ProjectElement* NodeAdder::pasteFile(std::unique_ptr<ProjectElement> copy, const QString& sourceDirectory,
                                     ProjectElement& target) {
    // The copy stands nowhere yet, so its name counts from the directory that it was copied in.
    copy->resolvePaths(configuration_);
    const QString path =
        copy->fileNameIsRelative ? sourceDirectory + u'/' + copy->resolvedFileName : copy->resolvedFileName;
    if (holdsFile(target, path)) {
        const QString text = QStringLiteral("The file '") + copy->elementName() +
                             QStringLiteral(
                                 "' exists in the project.\n\n"
                                 "Continue and add the file to the project?");
        if (!prompt_.ask(QString(), QStringLiteral("File exists in project"), text)) return nullptr;
    }
    ProjectElement* const project = target.enclosingProject();
    engine_.setElementAttribute(copy.get(), keys::fileName, relativeFilePath(directoryOf(project), path));
    copy->pathValid = false;
    ProjectElement* const parent = target.isFile() ? target.parentElement() : &target;
    ProjectElement* const pasted = copy.release();
    engine_.appendChild(parent, pasted);
    remember(*pasted);
    return pasted;
}

/// The directory of the project, or a null text without one.
QString NodeAdder::directoryOf(ProjectElement* project) const {
    return project ? engine_.projectDirectoryOf(project) : QString();
}

bool NodeAdder::holdsFile(ProjectElement& node, const QString& path) {
    ProjectElement* const project = node.enclosingProject();
    return project && filesOf(*project).contains(Path(resolvedPath(directoryOf(project), path)).key());
}

void NodeAdder::remember(ProjectElement& file) {
    ProjectElement* const project = file.enclosingProject();
    if (!project) return;
    QSet<QString>& files = filesOf(*project);
    file.resolvePaths(configuration_);
    files.insert(file.path.key());
}

QSet<QString>& NodeAdder::filesOf(ProjectElement& project) {
    const auto known = files_.find(&project);
    if (known != files_.end()) return *known;
    QSet<QString>& files = files_[&project];
    forEachElement(project, [&](ProjectElement& node) {
        if (!node.isFile()) return;
        node.resolvePaths(configuration_);
        files.insert(node.path.key());
    });
    return files;
}

bool abbreviatePath(const QString& macroName, const QString& file, QString& out) {
    const Path path(file);
    QString relative;
    const QString directory = macroEngine ? macroEngine->macroValue(macroName) : QString();
    if (!relativePath(directory, path.dirPath(true), relative) || relative.startsWith(u"..")) return false;
    out = QStringLiteral("$(") + macroName + QStringLiteral(")/");
    if (!relative.isEmpty()) out += relative + u'/';
    out += path.fileName();
    return true;
}

}  // namespace project
