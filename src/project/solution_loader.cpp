#include "project/solution_loader.h"

#include "build/process/command_text.h"
#include "build/process/project_system_process.h"
#include "project/project_system.h"
#include "project/solution_document.h"
#include "project/tree_walk.h"
#include "xml/directives.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QScopedValueRollback>

namespace project {

namespace {

bool isImportElement(const ProjectElement& element) {
    return element.tagName() == "import";
}

/// Moves the attributes of the file into the map that the engine uses. Equal keys share one text.
class AttributeReader {
public:
    void read(ProjectElement& node) {
        const auto& read = static_cast<const xml::XMLElement&>(node).attributes();
        QList<SortedMap<QString>::Entry> entries;
        entries.reserve(static_cast<qsizetype>(read.size()));
        for (const xml::XMLAttribute& attribute : read)
            entries.append({key(attribute.name), storedText(QString::fromUtf8(attribute.value))});
        node.attributes.assign(std::move(entries));
        node.clearAttributes();
    }

private:
    const QString& key(const QByteArray& name) {
        QString& text = keys_[name];
        if (text.isNull()) text = storedText(QString::fromUtf8(name));
        return text;
    }

    QHash<QByteArray, QString> keys_;
};

struct TargetRow {
    int number;
    const char* name;
};

constexpr TargetRow targetRows[] = {
    {1, "MULTOS"},    {2, "OTA"},       {3, "RTX"},   {4, "AVR"},     {5, "Windows Smart Card"},
    {6, "Lightfoot"}, {7, "Java Card"}, {8, "ARM"},   {9, "MSP430"},  {10, "CPU11"},
    {11, "KEVM"},     {12, "CPU08"},    {13, "SH4"},  {14, "Win32"},  {15, "Linux"},
    {16, "MacOS"},    {17, "Solaris"},  {18, "MAXQ"}, {19, "MAXQ30"}, {20, "RISC-V"},
};

QString targetName(int number) {
    for (const TargetRow& row : targetRows)
        if (row.number == number) return QString::fromLatin1(row.name);
    return QString::number(number);
}

std::vector<std::string> toBytes(const QStringList& texts) {
    std::vector<std::string> bytes;
    bytes.reserve(static_cast<std::size_t>(texts.size()));
    for (const QString& text : texts) bytes.push_back(text.toStdString());
    return bytes;
}

SolutionLoadError loadError(const QString& fileName, const char* tail) {
    return {fileName, fileName + QLatin1String(tail)};
}

/// Takes a name off a stack when its time is over.
class StackEntry {
public:
    StackEntry(QStringList& stack, const QString& name) : stack_(stack) { stack_.append(name); }
    StackEntry(const StackEntry&) = delete;
    StackEntry& operator=(const StackEntry&) = delete;
    ~StackEntry() { stack_.removeLast(); }

private:
    QStringList& stack_;
};

/// `around` is the solution that `root` is to be linked into, or null.
void addNames(LoadWork& work, ProjectElement& root, ProjectElement* around, const QString& fileName) {
    if (!work.addNames(mappedNamesLength(root, around)))
        throw SolutionLoadError(fileName, fileName + QStringLiteral(" has too many long names"));
}

void clearModified(ProjectElement& root) {
    forEachElement(root, [](ProjectElement& node) { node.modified = false; });
}

}  // namespace

SolutionLoadError::SolutionLoadError(const QString& fileName, const QString& message)
    : fileName_(fileName), hasPosition_(false), message_(message), bytes_(message.toUtf8()) {}

SolutionLoadError::SolutionLoadError(const QString& fileName, const QString& message, int line, int column)
    : fileName_(fileName),
      hasPosition_(true),
      message_(message),
      line_(line),
      column_(column),
      bytes_(message.toUtf8()) {}

SolutionLoader::SolutionLoader(ProjectSystem& engine, LoadWork& work, const QStringList& underLoad,
                               ProjectFileNotFoundErrorHandler* notFoundHandler, Progress* progress)
    : engine_(engine),
      work_(work),
      underLoad_(underLoad),
      outermost_(underLoad.size()),
      notFoundHandler_(notFoundHandler),
      progress_(progress) {}

std::unique_ptr<ProjectElement> SolutionLoader::loadFile(const QString& baseDirectory,
                                                         const QString& fileName, const QString& macros) {
    const File file = find(baseDirectory, fileName);
    const ProgressLevel level(progress_,
                              QStringLiteral("Loading solution ") + QFileInfo(file.name).fileName(), 2);
    if (underLoad_.contains(file.path)) throw loadError(file.path, " solution already loaded");
    std::unique_ptr<ProjectElement> root = parse(file, macros);
    {
        const StackEntry entry(underLoad_, file.path);
        runLoadCommands(*root, file);
        setTemplatesFile(*root, file);
        readNodes(*root, file);
        root->path.setFile(file.path);
        root->pathValid = true;
        root->solution->lastModified = root->path.lastModified();
    }
    const QString currentVersion = QStringLiteral("2");
    if (root->attributes.value(keys::version) != currentVersion)
        root->attributes.insert(keys::version, currentVersion);
    clearModified(*root);
    enterEnvironment(*root);
    return root;
}

SolutionLoader::File SolutionLoader::find(const QString& baseDirectory, const QString& fileName) const {
    File file{fileName, {}, {}};
    if (!baseDirectory.isEmpty() && !isAbsolutePath(fileName)) {
        const QString based = baseDirectory + u'/' + fileName;
        if (QFileInfo::exists(based) || !QFileInfo::exists(fileName)) file.name = based;
    }
    if (!QFileInfo::exists(file.name) && !(notFoundHandler_ && notFoundHandler_->goOn(file.name)))
        throw loadError(file.name, " does not exist");
    // What is no regular file may never end.
    if (!QFileInfo(file.name).isFile() || !QFile(file.name).open(QIODevice::ReadOnly))
        throw loadError(file.name, " cannot access");
    file.path = Path(file.name).absFilePath();
    file.directory = Path(file.path).dirPath(true);
    return file;
}

std::unique_ptr<ProjectElement> SolutionLoader::parse(const File& file, const QString& macros) {
    if (!work_.addFile(QFileInfo(file.path).size()) || underLoad_.size() >= maxSolutionDepth)
        throw loadError(file.name, " links too many solutions");
    ProjectSystemXMLPP2 document;
    if (!document.parse(file.path))
        throw SolutionLoadError(file.name, QString::fromUtf8(document.errorText()),
                                static_cast<int>(document.errorLine()), 0);
    document.processConditionals(file.path, xml::readMacroList(macros), !macros.isNull());
    if (document.doctype != solutionDoctype) throw loadError(file.name, " not a solution file");
    std::unique_ptr<xml::XMLNode> root = document.takeRoot();
    ProjectElement* const element = asProjectElement(root.get());
    if (!element || !element->isSolution())
        throw loadError(file.name, " is a malformed solution file (bad XML)");
    static_cast<void>(root.release());
    return std::unique_ptr<ProjectElement>(element);
}

void SolutionLoader::runLoadCommands(const ProjectElement& root, const File& file) {
    const QString commands = engine_.expandGlobalMacros(root.text("load_command"));
    if (commands.isEmpty() || !engine_.runsLoadCommands) return;
    const ProgressLevel level(progress_, QStringLiteral("Executing load commands"), 2);
    const QString environment = engine_.expandGlobalMacros(root.text("load_command_environment"));
    const std::vector<std::string> variables = toBytes(environment.split(u';'));
    for (const QString& command : commands.split(QStringLiteral("&&"), Qt::SkipEmptyParts)) {
        const QStringList arguments = build::parseCommandLine(command);
        const build::ProjectSystemProcess process(progress_, toBytes(arguments), file.directory.toStdString(),
                                                  variables);
        const int code = process.result();
        if (code == -1)
            throw SolutionLoadError(
                file.name, QStringLiteral("solution load command \"%1\" not found").arg(arguments.value(0)));
        if (code != 0)
            throw SolutionLoadError(file.name,
                                    QStringLiteral("solution load command failed (%1) ").arg(code));
    }
}

void SolutionLoader::setTemplatesFile(const ProjectElement& root, const File& file) {
    const QString text = root.text("templates_file");
    const MacroTable table{{QStringLiteral("SolutionDir"), Path(file.name).dirPath()}};
    const QString expanded = macroEngine ? macroEngine->expand(table, text, true, true) : text;
    if (!expanded.isEmpty()) findings_.templatesFile = expanded;
}

void SolutionLoader::readNodes(ProjectElement& root, const File& file) {
    AttributeReader attributes;
    const bool isOutermost = underLoad_.size() == outermost_ + 1;
    int done = 0;
    int total = 0;
    for (ProjectElement* child = root.firstChildElement(); child; child = child->nextSiblingElement())
        ++total;

    qsizetype depth = underLoad_.size() - 1;
    ProjectElement* node = &root;
    while (node) {
        ProjectElement* next = nullptr;
        if (isImportElement(*node)) {
            node = readLink(*node, file);
            ++depth;
        } else {
            attributes.read(*node);
            readNode(*node);
            depth += node->isSolution() ? 1 : 0;
            if (depth > maxSolutionDepth) throw loadError(file.name, " nests solutions too deep");
            next = node->firstChildElement();
        }
        while (!next && node != &root) {
            depth -= node->isSolution() ? 1 : 0;
            if (progress_ && isOutermost && node->parentElement() == &root)
                progress_->setProgress(++done, total);
            next = node->nextSiblingElement();
            if (!next) {
                node = node->parentElement();
                indexChildren(*node);
            }
        }
        node = next;
    }
}

void SolutionLoader::readNode(ProjectElement& node) {
    if (node.attributes.contains(u"template_name")) {
        findings_.templatedNodes.append(&node);
    } else if (node.attributes.contains(u"path")) {
        findings_.dynamicFolders.append(&node);
    }
    node.modified = false;
}

/// All at once, when the children have been read: a node can have many configurations, in any order.
void SolutionLoader::indexChildren(ProjectElement& parent) {
    QList<SortedMap<ProjectElement*>::Entry> configurations;
    for (ProjectElement* child = parent.firstChildElement(); child; child = child->nextSiblingElement()) {
        if (child->isConfiguration()) configurations.append({child->elementName(), child});
        if (child->isFolder()) parent.folders.append(child);
    }
    if (!configurations.isEmpty()) parent.configurations.assign(std::move(configurations));
}

ProjectElement* SolutionLoader::readLink(ProjectElement& import, const File& file) {
    const QString storedName = storedText(import.text("file_name"));
    QString macros = import.text("macros");
    if (!macros.isNull()) macros = storedText(engine_.expandGlobalMacros(macros));
    std::unique_ptr<ProjectElement> root =
        loadFile(file.directory, engine_.expandGlobalMacros(storedName), macros);
    const bool canModify = import.text("can_modify_solution") != u"No";
    makeLink(*root, storedName, canModify);
    import.parentElement()->replaceChild(&import, root.get());
    const std::unique_ptr<ProjectElement> replaced(&import);
    return root.release();
}

void SolutionLoader::enterEnvironment(ProjectElement& root) {
    const PropertyClass* const variables = engine_.schema().general.environment_variables;
    for (const QString& entry :
         engine_.propertyValueList(QString(), &root, variables, commonConfiguration, true, false)) {
        const qsizetype equals = entry.indexOf(u'=');
        const QString name = equals < 0 ? entry : entry.left(equals);
        qputenv(name.toLocal8Bit().constData(),
                equals < 0 ? QByteArray("") : entry.mid(equals + 1).toLocal8Bit());
    }
}

void checkTarget(const ProjectElement& root, int systemTarget, const QString& fileName) {
    const QString* const target = root.attributes.find(keys::target);
    if (!target) return;
    const int number = target->toInt();
    if (number != 0 && number != systemTarget)
        throw SolutionLoadError(fileName,
                                QStringLiteral("invalid solution target (%1)").arg(targetName(number)));
}

void makeLink(ProjectElement& root, const QString& storedName, bool canModify) {
    root.attributes.insert(keys::fileName, storedName);
    root.isImport = true;
    root.canModify = canModify;
    root.modified = false;
}

std::unique_ptr<ProjectElement> ProjectSystem::loadSolutionFile(
    const QString& baseDirectory, const QString& fileName, ProjectFileNotFoundErrorHandler* notFoundHandler,
    Progress* progress, const QString& macros) {
    LoadWork own;
    SolutionLoader loader(*this, loadWork_ ? *loadWork_ : own, filesUnderLoad_, notFoundHandler, progress);
    std::unique_ptr<ProjectElement> root = loader.loadFile(baseDirectory, fileName, macros);
    const LoadFindings& findings = loader.findings();
    templatedNodes_ += findings.templatedNodes;
    dynamicFolders_ += findings.dynamicFolders;
    if (!findings.templatesFile.isEmpty()) templatesFile_ = findings.templatesFile;
    changeLog_.clear();
    return root;
}

void ProjectSystem::loadSolution(const QString& fileName, ProjectFileNotFoundErrorHandler* notFoundHandler,
                                 TemplateNotFoundErrorHandler* templateHandler, Progress* progress,
                                 bool checkTarget) {
    closeSolution();
    try {
        LoadWork work;
        const QScopedValueRollback<LoadWork*> underLoad(loadWork_, &work);
        solution_ = loadSolutionFile(QString(), fileName, notFoundHandler, progress, QString());
        if (checkTarget) project::checkTarget(*solution_, targetNumber(), fileName);
        addNames(work, *solution_, nullptr, fileName);
        expandTemplatedProjects(templateHandler, progress);
        {
            const ProgressLevel level(progress, QStringLiteral("Mapping project information"), 0);
            rebuildProjectMaps(progress);
        }
        populateDynamicFolders(progress);
        afterLoad();
    } catch (...) {
        closeSolution();
        throw;
    }
    solutionFileName_ = fileName;
    loadTime_ = QDateTime::currentDateTime();
    Q_EMIT solutionLoaded();
}

void ProjectSystem::markClean() {
    clearModified(*solution_);
    changeLog_.clear();
}

ProjectElement* ProjectSystem::insertSolutionLink(ProjectElement* solution, const QString& fileName,
                                                  ProjectFileNotFoundErrorHandler* notFoundHandler,
                                                  Progress* progress) {
    const QString directory = solution->path.dirPath(true);
    const bool hasMacros = fileName.contains(u'$');
    const QString storedName = hasMacros ? fileName : relativeFilePath(directory, fileName);
    for (ProjectElement* child = solution->firstChildElement(); child; child = child->nextSiblingElement())
        if (child->isSolution() && child->attributes.value(keys::fileName) == storedName) return child;

    filesUnderLoad_.clear();
    for (ProjectElement* node = solution; node; node = node->parentElement())
        if (node->isSolution()) filesUnderLoad_.prepend(node->path.absFilePath());
    std::unique_ptr<ProjectElement> root =
        loadSolutionFile(directory, hasMacros ? expandGlobalMacros(fileName) : storedName, notFoundHandler,
                         progress, QString());
    filesUnderLoad_.clear();
    LoadWork own;
    addNames(loadWork_ ? *loadWork_ : own, *root, solution, root->path.normalised());
    makeLink(*root, storedText(storedName), true);
    ProjectElement* const linked = root.release();
    appendChild(solution, linked);
    if (!loadWork_) rebuildProjectMaps();  // a load does so once, at its end
    return linked;
}

}  // namespace project
