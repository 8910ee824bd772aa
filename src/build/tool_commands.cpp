#include "build/tool_commands.h"

#include "build/generated_files.h"
#include "build/link_inputs.h"
#include "build/process/command_text.h"
#include "build/tool_options.h"

#include <utility>

namespace build {

namespace {

const char* languageSwitch(BuildKind kind) {
    switch (kind) {
        case BuildKind::Assemble:
            return "-xasm";
        case BuildKind::CompileC:
            return "-xc";
        default:
            return "-xc++";
    }
}

/// "i", "l", "ll", or nothing for a word that is none of the levels.
QString integerCode(const QString& level) {
    if (level == u"long long") return QStringLiteral("ll");
    if (level == u"long") return QStringLiteral("l");
    return level == u"int" ? QStringLiteral("i") : QString();
}

}  // namespace

ToolCommand::ToolCommand(BuildSystem& engine, ProjectElement* node, const QString& configuration,
                         const ToolRequest& request, Builder& builder)
    : engine_(engine),
      request_(request),
      builder_(builder),
      properties_(engine, node, configuration),
      projectDirectory_(properties_.projectDirectory()) {}

void ToolCommand::run() {
    addCommonHead();
    switch (request_.kind) {
        case BuildKind::Link:
            return runLink();
        case BuildKind::Archive:
            return runArchive();
        default:
            return runCompilation();
    }
}

void ToolCommand::addCommonHead() {
    const auto& general = properties_.general();
    arguments_.append(engine_.expandGlobalMacros(QStringLiteral("$(AtelisDir)/bin/cc")));
    addIf(!properties_.isYes(general.build_quietly), "-v");
    addIf(properties_.isYes(general.build_treat_warnings_as_errors), "-we");
    addIf(properties_.isYes(general.build_suppress_warnings), "-w");
}

void ToolCommand::runStep(const QString& title) {
    builder_.beginStep(properties_.node(), title, properties_.configuration(), 0);
    builder_.run(projectDirectory_, arguments_, request_.targetPath);
    // The step of a compilation that was cut short is closed by whoever cut it.
    const bool isLinked = request_.kind == BuildKind::Link || request_.kind == BuildKind::Archive;
    if (isLinked || !engine_.isStopped()) builder_.endStep(properties_.node(), properties_.configuration());
}

// --- Compiling and assembling ---

void ToolCommand::runCompilation() {
    const auto& tools = properties_.tools();
    const bool isCpp = request_.kind == BuildKind::CompileCpp;
    add("-c");
    add(languageSwitch(request_.kind));
    arguments_.append(request_.inputs.value(0));
    addIf(isCpp && properties_.isYes(tools.cpp_enable_exceptions), "-exceptions");
    addIf(isCpp && properties_.isYes(tools.cpp_enable_rtti), "-rtti");
    addIf(properties_.isYes(properties_.general().build_debug_information), "-g");
    engine_.addTargetOptions(properties_.node(), properties_.configuration(), request_.kind, arguments_);
    arguments_ += properties_.includeOptions(true, false);
    addGroupOptions();
    arguments_ += properties_.list("-D", tools.c_preprocessor_definitions, true, true);
    arguments_ += properties_.list("-U", tools.c_preprocessor_undefinitions, true, false);
    if (request_.generateDependencies) addDependencyFile();
    addSections();
    if (!addCompilerOptions()) return;
    add(QStringLiteral("-o"), request_.targetName);
    runStep(compileTitle());
}

void ToolCommand::addDependencyFile() {
    const auto name = [this](bool absolute) {
        return engine_.dependencyFileName(properties_.node(), properties_.configuration(),
                                          request_.targetName, absolute);
    };
    makeDirectory(engine_, project::Path(name(true)).dirPath());
    add(QStringLiteral("-depend"), name(false));
}

/// What the chosen property groups add.
void ToolCommand::addGroupOptions() {
    const auto elements = [&](const char* tag) {
        return engine_.propertyGroupElements(properties_.node(), properties_.configuration(), tag);
    };
    QStringList includes;
    for (const xml::XMLElement* include : elements("cinclude"))
        includes.append(QStringLiteral("-I") + include->text("value"));
    arguments_ += engine_.expandMacroList(properties_.node(), properties_.configuration(), includes);
    for (const xml::XMLElement* define : elements("cdefine")) {
        QString option = QStringLiteral("-D") + define->text("name");
        if (define->hasAttribute("value")) option += u'=' + define->text("value");
        arguments_.append(option);
    }
}

void ToolCommand::addSections() {
    const auto& tools = properties_.tools();
    const std::pair<const char*, const PropertyClass*> rows[] = {
        {"-Rc,", tools.default_code_section},
        {"-Rd,", tools.default_data_section},
        {"-Rz,", tools.default_zeroed_section},
        {"-Rk,", tools.default_const_section},
    };
    for (const auto& [option, section] : rows) {
        const QString value = properties_.value(section);
        if (value != section->defaultValue) arguments_.append(QString::fromLatin1(option) + value);
    }
}

bool ToolCommand::addCompilerOptions() {
    const auto& tools = properties_.tools();
    const auto addPair = [&](const char* prefix, const PropertyClass* plain, const PropertyClass* file) {
        QStringList options = splitEscaped(properties_.expanded(plain), false);
        if (!optionsFromFile(properties_, file, builder_, options)) return false;
        for (const QString& option : std::as_const(options))
            arguments_.append(QString::fromLatin1(prefix) + option);
        return true;
    };
    if (request_.kind == BuildKind::Assemble)
        return addPair("-Wa,", tools.asm_additional_options, tools.asm_additional_options_from_file);
    if (!addPair("-Wc,", tools.c_additional_options, tools.c_additional_options_from_file)) return false;
    return request_.kind == BuildKind::CompileC
               ? addPair("-Wc,", tools.c_only_additional_options, tools.c_only_additional_options_from_file)
               : addPair("-Wc,", tools.cpp_only_additional_options,
                         tools.cpp_only_additional_options_from_file);
}

QString ToolCommand::compileTitle() const {
    ProjectElement* const node = properties_.node();
    if (node->isFolder())
        return QStringLiteral("Compiling folder ") + quote(node->elementName()) +
               QStringLiteral(" in unity mode as ") + node->path.fileName();
    const bool assembles = request_.kind == BuildKind::Assemble;
    return (assembles ? QStringLiteral("Assembling ") : QStringLiteral("Compiling ")) +
           quote(node->elementName());
}

// --- Linking and archiving ---

/// Writes the inputs to a file of their own, one a line, and names it.
bool ToolCommand::addIndirectFile(const QString& stepTitle) {
    const QString path =
        indirectFilePath(engine_, properties_.node(), properties_.configuration(), request_.targetName);
    if (!writeGeneratedFile(
            engine_, path,
            engine_.expandMacroList(properties_.node(), properties_.configuration(), request_.inputs))) {
        builder_.beginStep(properties_.node(), stepTitle, properties_.configuration(), 0);
        builder_.error(QStringLiteral("Cannot open file: ") + path);
        builder_.endStep(properties_.node(), properties_.configuration());
        return false;
    }
    add(QStringLiteral("-inputfiles"), project::relativeFilePath(projectDirectory_, path));
    return true;
}

void ToolCommand::runLink() {
    if (!addIndirectFile(QStringLiteral("Creating Linker Indirect File"))) return;
    addLayout();
    addLinkerSwitches();
    if (!addLinkerLists()) return;
    const QString patch = properties_.expanded(properties_.tools().linker_patch_build_command);
    if (!patch.isEmpty())
        add(QStringLiteral("-patch"), QString(patch).replace(u'\\', QStringLiteral("\\\\")));
    add(QStringLiteral("-o"), request_.targetName);
    runStep(QStringLiteral("Linking ") + quote(project::Path(request_.targetName).fileName()));
}

/// Where the linker puts things: by a script, or by a map of the memory and a file of placements.
void ToolCommand::addLayout() {
    QString file;
    if (resolveLinkerScript(properties_, nullptr, file)) {
        arguments_.append(QStringLiteral("-T") + file);
    } else {
        addPlacement();
    }
}

void ToolCommand::addPlacement() {
    const auto& tools = properties_.tools();
    const auto addFile = [&](const char* option, const QString& file, const char* macrosOption,
                             const PropertyClass* macros) {
        add(QString::fromLatin1(option), project::relativeFilePath(projectDirectory_, file));
        if (properties_.isSet(macros)) add(QString::fromLatin1(macrosOption), properties_.value(macros));
    };
    QString file;
    if (resolveMemoryMap(properties_, &builder_, file)) {
        addFile("-memorymap", file, "-memorymapmacros", tools.linker_memory_map_macros);
    } else {
        const QString segments = properties_.expanded(tools.linker_section_placements_segments);
        if (!segments.isEmpty()) add(QStringLiteral("-placementsegments"), segments);
    }
    if (resolveSectionPlacement(properties_, nullptr, file))
        addFile("-placement", file, "-placementmacros", tools.linker_section_placement_macros);
}

void ToolCommand::addLinkerSwitches() {
    const auto& tools = properties_.tools();
    addIf(properties_.isYes(tools.cpp_enable_exceptions), "-exceptions");
    addIf(properties_.isYes(tools.cpp_enable_rtti), "-rtti");
    arguments_.append(QStringLiteral("-printf=") + printfCode(properties_));
    arguments_.append(QStringLiteral("-scanf=") + scanfCode(properties_));
    engine_.addTargetOptions(properties_.node(), properties_.configuration(), request_.kind, arguments_);
    const QString format = outputFormat(properties_);
    if (!format.isEmpty()) arguments_.append(QStringLiteral("-F") + format);
    addIf(properties_.reads(tools.link_include_standard_libraries, u"No"), "-l-");
    addIf(properties_.isYes(tools.linker_map_file), "-M");
}

bool ToolCommand::addLinkerLists() {
    const auto& tools = properties_.tools();
    arguments_ += properties_.list("-d", tools.link_symbol_definitions, false, false);
    arguments_ += properties_.list("-K", tools.linker_keep_symbols, false, false);
    const QString options = properties_.expanded(tools.linker_additional_options);
    QStringList all = splitEscaped(options, false);
    if (!optionsFromFile(properties_, tools.linker_additional_options_from_file, builder_, all)) return false;
    for (const QString& option : std::as_const(all)) arguments_.append(QStringLiteral("-Wl,") + option);
    return true;
}

void ToolCommand::runArchive() {
    if (!addIndirectFile(QStringLiteral("Creating Archive Indirect File"))) return;
    add("-ar");
    add(QStringLiteral("-o"), request_.targetName);
    runStep(QStringLiteral("Archiving ") + quote(project::Path(request_.targetName).fileName()));
}

QString indirectFilePath(project::ProjectSystem& engine, ProjectElement* node, const QString& configuration,
                         const QString& targetName) {
    return engine.intermediateFilePath(node, configuration,
                                       project::Path(targetName).baseName(true) + QStringLiteral(".ind"));
}

QString outputFormat(const NodeProperties& properties) {
    QString format = properties.value(properties.tools().linker_output_format);
    return format == u"None" ? QString() : format;
}

QString printfCode(const NodeProperties& properties) {
    const auto& tools = properties.tools();
    const QString level = properties.value(tools.linker_printf_fmt_level);
    const QString floats = properties.value(tools.linker_printf_fp_enabled);
    QString code;
    if (floats == u"No") {
        code = integerCode(level);
        if (properties.isYes(tools.linker_printf_width_precision_supported)) code += u'p';
    } else {
        code = floats == u"Double" || floats == u"Yes" ? QStringLiteral("d") : QStringLiteral("f");
        if (level == u"long long") code += QStringLiteral("ll");
    }
    if (properties.isYes(tools.linker_printf_wchar_enabled)) code += u'w';
    return code;
}

QString scanfCode(const NodeProperties& properties) {
    const auto& tools = properties.tools();
    const QString level = properties.value(tools.linker_scanf_fmt_level);
    QString code = integerCode(level);
    if (properties.isYes(tools.linker_scanf_fp_enabled))
        code = level == u"long long" ? QStringLiteral("dll") : QStringLiteral("d");
    if (properties.isYes(tools.linker_scanf_character_group_matching_enabled)) code += u'c';
    return code;
}

}  // namespace build
