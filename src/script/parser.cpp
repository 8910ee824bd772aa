#include "script/parser.h"

#include "script/code_generator.h"
#include "script/context.h"
#include "script/parser_support.h"

namespace script {

ESParser::ESParser(ESContext& context) : ESLexer(context), context_(context) {}

ESParser::~ESParser() = default;

void ESParser::setSource(QStringView text) {
    ESLexer::setSource(text);
    functionDepth_ = 0;
    withDepth_ = 0;
    nesting_ = 0;
}

ESNode* ESParser::newNode(int kind) {
    ESNode& node = nodes_.emplace_back();
    node.kind = kind;
    node.line = line();
    return &node;
}

ESNode* ESParser::newNode(int kind, ESNode* first, ESNode* second, ESNode* third) {
    ESNode* node = newNode(kind);
    int place = 0;
    for (ESNode* operand : {first, second, third}) {
        node->child[place++] = operand;
        if (operand != nullptr) node->hasEffects = node->hasEffects || operand->hasEffects;
    }
    node->line = first->line;
    return node;
}

ESNode* ESParser::markEffects(ESNode* node) {
    node->hasEffects = true;
    return node;
}

ESNode* ESParser::newName(const ESAtom* name) {
    ESNode* node = newNode(TokenIdentifier);
    node->name = name;
    return node;
}

FunctionUnit* ESParser::beginFunction() {
    FunctionUnit& unit = units_.emplace_back();
    unit.enclosing = unit_;
    unit.isInsideWith = withDepth_ > 0 || (unit_ != nullptr && unit_->isInsideWith);
    unit.ownedCode = std::make_unique<ESCode>();
    unit.code = unit.ownedCode.get();
    unit.line = line();
    unit_ = &unit;
    setUnit(unit_);
    return unit_;
}

void ESParser::endFunction(FunctionUnit* unit) {
    functions_.push_back(unit);
    unit->templateIndex = context_.addTemplate(std::move(unit->ownedCode));
    unit_ = unit->enclosing;
    setUnit(unit_);
}

void ESParser::generateFunctions() {
    for (FunctionUnit* unit : functions_) ESCodeGenerator(context_, *unit).generateFunction();
}

std::unique_ptr<ESCode> ESParser::compileProgram() {
    FunctionUnit* program = beginFunction();
    program->isProgram = true;
    program->body = parseStatementList({TokenEnd});
    generateFunctions();
    ESCodeGenerator(context_, *program).generateProgram();
    return std::move(program->ownedCode);
}

std::unique_ptr<ESCode> ESParser::compileFunction(QStringView parameterText, QStringView bodyText) {
    FunctionUnit* function = beginFunction();
    setSource(parameterText);
    parseParameters(TokenEnd);
    setSource(bodyText);
    functionDepth_ = 1;
    function->body = parseStatementList({TokenEnd});
    generateFunctions();
    ESCodeGenerator(context_, *function).generateFunction();
    return std::move(function->ownedCode);
}

}  // namespace script
