#include "project/project_system.h"

#include "project/base/macro_engine.h"
#include "project/file_type.h"

namespace project {

ProjectSystem* projectSystem = nullptr;

ProjectSystem::ProjectSystem(const QStringList& fileTypes, const QStringList& projectTypes,
                             const QString& defaultTemplatesFile)
    : schema_(std::make_unique<properties::Schema>(fileTypes, projectTypes)),
      templatesFile_(defaultTemplatesFile),
      defaultTemplatesFile_(defaultTemplatesFile) {}

ProjectSystem::~ProjectSystem() = default;

void ProjectSystem::closeSolution() {
    solutionIndex_.clear();
    filesUnderLoad_.clear();
    templatedNodes_.clear();
    dynamicFolders_.clear();
    solution_.reset();
    leftOpen_.clear();
    changeLog_.clear();
    propertyGroupFiles_.clear();
    solutionFileName_.clear();
    templatesFile_ = defaultTemplatesFile_;
}

PropertyValueList ProjectSystem::propertyValues(ProjectElement*, const QString&) {
    return {};
}

QString ProjectSystem::projectDirectoryOf(ProjectElement* node) {
    if (!node) node = solution();
    if (!node) return {};
    if (node->isSolution()) return node->path.dirPath(true);
    if (node->isFolder() || node->isFile()) node = node->enclosingProject();
    if (!node || !node->isProject()) return {};
    node->resolvePaths(commonConfiguration);
    return node->directory;
}

QString ProjectSystem::fileType(ProjectElement* node, const QString& configuration) {
    if (!node) return {};
    const auto& general = schema().general;
    QString type = propertyValue(node, general.file_type, configuration);
    if (type.isEmpty() || type == u"Default") {
        if (node->fileType.isEmpty()) {
            node->resolvePaths(configuration);
            node->fileType = recogniseFileType(
                node->path.normalised(), {objectExtension(), executableExtension(), libraryExtension()});
        }
        type = node->fileType;
    }
    // Never remembered: the property can differ between configurations.
    if (type == u"C") {
        const PropertyClass* const filesAreCpp = schema().find(QStringLiteral("c_files_are_cpp"));
        if (filesAreCpp && propertyValue(node, filesAreCpp, configuration) == u"Yes")
            return QStringLiteral("C++");
    }
    return type;
}

QString ProjectSystem::objectExtension() {
    return {};
}
QString ProjectSystem::libraryExtension() {
    return {};
}
QString ProjectSystem::executableExtension() {
    return {};
}
QString ProjectSystem::templatesFilePath() {
    return macroEngine ? macroEngine->expandSystem(templatesFile_) : templatesFile_;
}
QString ProjectSystem::displayText(const char* text) {
    return QString::fromLatin1(text);
}
void ProjectSystem::afterLoad() {}
bool ProjectSystem::memorySegments(ProjectElement*, const QString&, QList<MemorySegment>&) {
    return false;
}
QString ProjectSystem::platformName() {
    return QStringLiteral("ARM");
}
int ProjectSystem::targetNumber() {
    return 8;
}
QString ProjectSystem::locateFile(const QString&, const QString&, ProjectElement*, const QString&) {
    return {};
}
QString ProjectSystem::objectFileName(ProjectElement*, const QString&, bool) {
    return {};
}
void ProjectSystem::inputsOfNode(ProjectElement*, const QString&, bool, bool, bool, QStringList&) {}
void ProjectSystem::outputFiles(ProjectElement*, const QString&, QStringList&) {}

bool ProjectSystem::isExecutableProject(ProjectElement* node, const QString& configuration) {
    if (!node) return false;
    loadToolDescriptions(node, configuration);
    const QString type = propertyValue(node, schema().general.project_type, configuration);
    return type == u"Executable" || type == u"Externally Built Executable";
}

bool ProjectSystem::hasOutput(ProjectElement*, const QString&) {
    return false;
}

bool ProjectSystem::hasBuiltOutput(ProjectElement* node, const QString& configuration) {
    return node &&
           !propertyValue(node, schema().general.project_type, configuration)
                .startsWith(u"Externally Built") &&
           hasOutput(node, configuration);
}

bool ProjectSystem::isCompiled(ProjectElement*, const QString&) {
    return false;
}

bool ProjectSystem::isExcludedFromBuild(ProjectElement* node, const QString& configuration) {
    return node && propertyValue(node, schema().general.build_exclude_from_build, configuration) == u"Yes";
}

QString ProjectSystem::hostText() {
    return {};
}
QStringList ProjectSystem::baseCodeModelArguments(ProjectElement*, const QString&) {
    return {};
}
QStringList ProjectSystem::codeModelArguments(ProjectElement* node, const QString& configuration) {
    return baseCodeModelArguments(node, configuration);
}
void ProjectSystem::baseCodeModelArgumentsInto(ProjectElement* node, const QString& configuration,
                                               QStringList& list) {
    list = baseCodeModelArguments(node, configuration);
}
int ProjectSystem::countBuildSteps(ProjectElement*, const QString&, std::uint32_t) {
    return 0;
}
bool ProjectSystem::buildNode(ProjectElement*, const QString&, build::Builder*, build::Idler*,
                              std::uint32_t) {
    return false;
}
void ProjectSystem::addMacros(ProjectElement*, const QString&, MacroTable&) {}
bool ProjectSystem::isUnityFolder(ProjectElement*, const QString&, bool) {
    return false;
}
bool ProjectSystem::hostPredicate() {
    return false;
}
void ProjectSystem::hostAction() {}
bool ProjectSystem::isCLikeType(const QString& fileType) {
    return fileType == u"C" || fileType == u"C++";
}
void ProjectSystem::analyzeFile(ProjectElement*, const QString&, build::Builder*) {}
QString ProjectSystem::intermediateFilePath(ProjectElement*, const QString&, const QString&) {
    return {};
}
QString ProjectSystem::dependencyFileName(ProjectElement*, const QString&, const QString&, bool) {
    return {};
}
void ProjectSystem::loadToolDescriptions(ProjectElement*, const QString&) {}

QStringList ProjectSystem::solutionProjectNames() const {
    return solution_ ? solution_->solution->projectIndex.keys() : QStringList();
}

}  // namespace project
