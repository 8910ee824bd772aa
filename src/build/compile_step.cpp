#include "build/compile_step.h"

#include "build/generated_files.h"
#include "build/process/command_text.h"
#include "project/build_outputs.h"

namespace build {

CompileStep::CompileStep(const BuildRequest& request, const NodeState& state)
    : NodeStep(request, state),
      object_(target(engine().outputFileName(state.kind, node(), request.configuration, false))),
      externalCommand_(project::externalCompileCommand(properties().tools(), state.kind)) {}

bool CompileStep::build() {
    request().idler.stepDone(node(), request().configuration);
    node()->resolvePaths(request().configuration);
    const QString path = node()->path.absFilePath();
    if (!fileExists(path)) {
        if (!request().builder) return false;
        beginStep(QStringLiteral("Checking Source File Exists"));
        builder().error(path + QStringLiteral(" does not exist."));
        endStep();
        return false;
    }
    beginCheck();
    if (isUpToDate()) {
        endUpToDate(u'\'' + object_.name + QStringLiteral("' is up to date"));
        return false;
    }
    endCheck();
    if (request().has(BuildFlags::Clean)) clean(outputs());
    if (endsAtDecision()) return true;
    const QString source = preCompile();
    if (isStopped()) return true;
    compile(source);
    if (state().kind != BuildKind::Assemble && properties().isYes(properties().tools().analyze_after_compile))
        engine().analyzeFile(node(), request().configuration, &builder());
    if (!isStopped()) postCompile();
    return true;
}

bool CompileStep::isUpToDate() {
    if (!exists(object_) || state().rebuild || !inputsOlderThan(object_, {node()->resolvedFileName}))
        return false;
    const QStringList dependencies =
        engine().readDependencyFile(node(), request().configuration, projectDirectory(), object_.name);
    return inputsOlderThan(object_, dependencies) && propertiesUnchangedSince(object_);
}

QStringList CompileStep::outputs() const {
    QStringList files{object_.path,
                      engine().dependencyFileName(node(), request().configuration, object_.name, true)};
    engine().extraOutputFiles(node(), request().configuration, state().kind, object_.path, files);
    return files;
}

QString CompileStep::preCompile() const {
    const auto& tools = properties().tools();
    const QStringList command = parseCommandLine(properties().expanded(tools.compile_pre_build_command));
    if (command.isEmpty()) return node()->resolvedFileName;
    const QString directory = properties().directory(tools.compile_pre_build_command_wd);
    QString output = properties().expanded(tools.compile_pre_build_command_output_file_name);
    if (!output.isEmpty())
        output = project::relativeFilePath(directory, resolvedPath(projectDirectory(), output));
    runStep(QStringLiteral("Pre-compile command "), directory, command, output);
    return output.isEmpty() ? node()->resolvedFileName : output;
}

void CompileStep::compile(const QString& source) const {
    if (properties().isSet(externalCommand_)) {
        compileExternally();
    } else {
        engine().runTool(node(), request().configuration, state().kind, object_.name, object_.path, {source},
                         &builder(), !request().has(BuildFlags::NoDependencyFiles));
    }
}

void CompileStep::compileExternally() const {
    QStringList arguments = parseCommandLine(properties().expanded(externalCommand_, compileMacros()));
    switch (state().kind) {
        case BuildKind::CompileC:
            addToolOptions(arguments, {properties::Tool::Compiler, properties::Tool::CCompiler});
            break;
        case BuildKind::CompileCpp:
            addToolOptions(arguments, {properties::Tool::Compiler, properties::Tool::CppCompiler});
            break;
        default:
            addToolOptions(arguments, {properties::Tool::Assembler});
            break;
    }
    const bool assembles = state().kind == BuildKind::Assemble;
    runStep((assembles ? QStringLiteral("Assembling ") : QStringLiteral("Compiling ")) + quotedName(),
            projectDirectory(), arguments, object_.path);
}

/// What the text of an external command can use beside the macros of the node.
MacroTable CompileStep::compileMacros() const {
    const auto& tools = properties().tools();
    const auto dependencyFile = [&](bool absolute) {
        return engine().dependencyFileName(node(), request().configuration, object_.name, absolute);
    };
    const auto joined = [&](const char* prefix, const PropertyClass* list, bool escaped) {
        return properties().list(prefix, list, true, escaped).join(u' ');
    };
    MacroTable macros = targetMacros(object_);
    makeDirectory(engine(), project::Path(dependencyFile(true)).dirPath());
    macros.insert(QStringLiteral("DependencyPath"), dependencyFile(true));
    macros.insert(QStringLiteral("RelDependencyPath"), dependencyFile(false));
    macros.insert(QStringLiteral("Defines"), joined("-D", tools.c_preprocessor_definitions, true));
    macros.insert(QStringLiteral("Undefines"), joined("-U", tools.c_preprocessor_undefinitions, false));
    macros.insert(QStringLiteral("Includes"), properties().includeOptions(true, true).join(u' '));
    if (state().kind == BuildKind::Assemble) {
        macros.insert(QStringLiteral("AsmOptions"), joined("", tools.asm_additional_options, true));
        return macros;
    }
    macros.insert(QStringLiteral("COptions"), joined("", tools.c_additional_options, true));
    if (state().kind == BuildKind::CompileC)
        macros.insert(QStringLiteral("COnlyOptions"), joined("", tools.c_only_additional_options, true));
    else
        macros.insert(QStringLiteral("CppOnlyOptions"), joined("", tools.cpp_only_additional_options, true));
    return macros;
}

void CompileStep::postCompile() const {
    const auto& tools = properties().tools();
    const QStringList command =
        parseCommandLine(properties().expanded(tools.compile_post_build_command, targetMacros(object_)));
    runStep(QStringLiteral("Post-compile command "),
            properties().directory(tools.compile_post_build_command_wd), command, QString());
}

}  // namespace build
