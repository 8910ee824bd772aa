#include "script/atom.h"
#include "script/context.h"
#include "script/generator_nesting.h"
#include "script/parser.h"

namespace script {

namespace {

bool isLoop(const ESNode* node) {
    return node->kind == TokenWhile || node->kind == TokenFor || node->kind == KindForIn ||
           node->kind == TokenDo;
}

bool isStatement(int kind) {
    switch (kind) {
        case KindBlock:
        case TokenVar:
        case TokenWhile:
        case TokenDo:
        case TokenFor:
        case KindForIn:
        case TokenIf:
        case TokenReturn:
        case TokenWith:
        case TokenSwitch:
        case TokenBreak:
        case TokenContinue:
        case KindLabel:
            return true;
        default:
            return false;
    }
}

}  // namespace

void ESCodeGenerator::generateFunction() {
    const auto generatePass = [this] {
        if (!isFirstPass_ && code_.usesArguments) {
            emit(Op::Undefined, unit_.line);
            emitPut(knownAtoms().arguments, unit_.line);
        }
        generateStatement(unit_.body, false);
        emit(Op::RetU, unit_.body->line);
    };
    generatePass();
    if (code_.needsActivation || code_.usesArguments) {
        isFirstPass_ = false;
        resetChains();
        code_.bytes.clear();
        code_.lines.clear();
        code_.functions.clear();
        generatePass();
    }
    code_.stackDepth = measureStack(code_);
}

void ESCodeGenerator::generateProgram() {
    generateStatement(unit_.body, true);
    emit(Op::Ret, unit_.body->line);
    code_.stackDepth = measureStack(code_);
}

void ESCodeGenerator::resetChains() {
    for (ESNode* node : chained_) node->breakChain = node->continueChain = ESNode::endOfChain;
    chained_.clear();
}

void ESCodeGenerator::generateStatement(ESNode* node, bool wanted) {
    if (!isStatement(node->kind)) return generate(node, wanted);
    const Nesting nesting(*this, node);
    chained_.push_back(node);
    statements_.push_back(node);
    generateStatementCode(node, wanted);
    statements_.pop_back();
    patchChain(node->breakChain, position());
    if (wanted && node->kind != KindBlock) emit(Op::Undefined, node->line);
}

void ESCodeGenerator::generateStatementCode(ESNode* node, bool wanted) {
    switch (node->kind) {
        case KindBlock:
            return generateBlock(node, wanted);
        case TokenVar:
            return generateVar(node);
        case TokenWhile:
            return generateWhile(node);
        case TokenDo:
            return generateDo(node);
        case TokenFor:
            return generateFor(node);
        case KindForIn:
            return generateForIn(node);
        case TokenIf:
            return generateIf(node);
        case TokenReturn:
            return generateReturn(node);
        case TokenWith:
            return generateWith(node);
        case TokenSwitch:
            return generateSwitch(node);
        case TokenBreak:
            return generateBreak(node);
        case TokenContinue:
            return generateContinue(node);
        default:
            return generateStatement(node->child[0], false);
    }
}

/// The value of a block is that of its last statement.
void ESCodeGenerator::generateBlock(const ESNode* block, bool wanted) {
    for (ESNode* function = block->child[0]; function != nullptr; function = function->next)
        generateStatement(function, false);
    for (ESNode* statement = block->child[1]; statement != nullptr; statement = statement->next)
        generateStatement(statement, wanted && statement->next == nullptr);
    if (wanted && block->child[1] == nullptr) emit(Op::Undefined, block->line);
}

void ESCodeGenerator::generateVar(const ESNode* node) {
    for (ESNode* declaration = node->child[0]; declaration != nullptr; declaration = declaration->next)
        generate(declaration, false);
}

void ESCodeGenerator::generateWhile(ESNode* node) {
    const std::uint32_t top = position();
    generate(node->child[0], true);
    emitJumpOnChain(Op::Jf, node->breakChain, node->line);
    generateStatement(node->child[1], false);
    emitWithOperand(Op::J, top, node->line);
    patchChain(node->continueChain, top);
}

void ESCodeGenerator::generateDo(ESNode* node) {
    const std::uint32_t top = position();
    generateStatement(node->child[0], false);
    patchChain(node->continueChain, position());
    generate(node->child[1], true);
    emitWithOperand(Op::Jt, top, node->line);
}

void ESCodeGenerator::generateFor(ESNode* node) {
    if (node->child[0] != nullptr) generateStatement(node->child[0], false);
    std::uint32_t toTest = ESNode::endOfChain;
    emitJumpOnChain(Op::J, toTest, node->line);
    const std::uint32_t top = position();
    generateStatement(node->child[3], false);
    patchChain(node->continueChain, position());
    if (node->child[2] != nullptr) generate(node->child[2], false);
    patchChain(toTest, position());
    generateForTest(node->child[1], top, node->line);
}

void ESCodeGenerator::generateForTest(const ESNode* test, std::uint32_t top, std::uint32_t line) {
    if (test == nullptr) return emitWithOperand(Op::J, top, line);
    if (test->kind == '<') {
        generate(test->child[0], true);
        generate(test->child[1], true);
        return emitWithOperand(Op::Jlt, top, line);
    }
    generate(const_cast<ESNode*>(test), true);
    emitWithOperand(Op::Jt, top, line);
}

void ESCodeGenerator::generateForIn(ESNode* node) {
    if (node->name == nullptr) node->name = ESContext::hiddenName();
    addVariable(context_, unit_, node->name, DontEnumerate | DontDelete, false);
    ESNode* target = node->child[0];
    if (target->kind == TokenVar) {
        generateVar(target);
        target = target->child[0];
        if (target->kind == '=') target = target->child[0];
    }
    generate(node->child[1], true);
    emit(Op::Enum, node->line);
    emitPut(node->name, node->line);
    emitJumpOnChain(Op::J, node->continueChain, node->line);
    const std::uint32_t top = position();
    generateStore(target);
    generateStatement(node->child[2], false);
    patchChain(node->continueChain, position());
    emitGet(node->name, node->line);
    emitWithOperand(Op::Next, top, node->line);
}

void ESCodeGenerator::generateIf(const ESNode* node) {
    std::uint32_t toElse = ESNode::endOfChain;
    std::uint32_t toEnd = ESNode::endOfChain;
    generate(node->child[0], true);
    emitJumpOnChain(Op::Jf, toElse, node->line);
    generateStatement(node->child[1], false);
    if (node->child[2] != nullptr) emitJumpOnChain(Op::J, toEnd, node->line);
    patchChain(toElse, position());
    if (node->child[2] != nullptr) generateStatement(node->child[2], false);
    patchChain(toEnd, position());
}

void ESCodeGenerator::generateReturn(const ESNode* node) {
    if (node->child[0] == nullptr) return emit(Op::RetU, node->line);
    generate(node->child[0], true);
    emit(Op::Ret, node->line);
}

void ESCodeGenerator::generateWith(ESNode* node) {
    generate(node->child[0], true);
    emit(Op::With, node->line);
    ++withDepth_;
    generateStatement(node->child[1], false);
    --withDepth_;
    emit(Op::EndWith, node->line);
}

void ESCodeGenerator::generateSwitch(const ESNode* node) {
    generate(node->child[0], true);
    for (ESNode* clause = node->child[1]; clause != nullptr; clause = clause->next) {
        chained_.push_back(clause);
        if (clause->kind == TokenDefault) continue;
        emit(Op::Dup, clause->line);
        generate(clause->child[0], true);
        emit(Op::Identity, clause->line);
        emitJumpOnChain(Op::JtDrop, clause->breakChain, clause->line);
    }
    emit(Op::Drop, node->line);
    std::uint32_t toEnd = ESNode::endOfChain;
    ESNode* defaultClause = node->child[2];
    emitJumpOnChain(Op::J, defaultClause != nullptr ? defaultClause->breakChain : toEnd, node->line);
    for (ESNode* clause = node->child[1]; clause != nullptr; clause = clause->next) {
        patchChain(clause->breakChain, position());
        generateStatement(clause->child[1], false);
    }
    patchChain(toEnd, position());
}

/// The place in the statement stack of the statement that the label of `node` marks.
std::size_t ESCodeGenerator::findLabel(const ESNode* node) const {
    std::size_t place = statements_.size();
    while (place > 0 &&
           !(statements_[place - 1]->kind == KindLabel && statements_[place - 1]->name == node->name))
        --place;
    while (place > 0 && place < statements_.size() && statements_[place]->kind == KindLabel) ++place;
    return place;
}

/// Takes off the scope chain what `statement` and the statements inside it put there.
void ESCodeGenerator::leaveWiths(std::size_t statement, std::uint32_t line) {
    for (std::size_t place = statements_.size(); place-- > statement;)
        if (statements_[place]->kind == TokenWith) emit(Op::EndWith, line);
}

void ESCodeGenerator::generateBreak(const ESNode* node) {
    std::size_t place = statements_.size();
    if (node->name != nullptr) {
        place = findLabel(node);
        if (place == 0) refuse(node->line, QStringLiteral("can't find label %1").arg(node->name->text));
    } else {
        while (place > 0 && !isLoop(statements_[place - 1]) && statements_[place - 1]->kind != TokenSwitch)
            --place;
        if (place == 0) refuse(node->line, QStringLiteral("'break' not in a 'for' or 'while' loop"));
        --place;
    }
    leaveWiths(place, node->line);
    emitJumpOnChain(Op::J, statements_[place]->breakChain, node->line);
}

void ESCodeGenerator::generateContinue(const ESNode* node) {
    std::size_t place = statements_.size();
    if (node->name != nullptr) {
        place = findLabel(node);
        if (place == 0) refuse(node->line, QStringLiteral("can't find label %1").arg(node->name->text));
        if (!isLoop(statements_[place]))
            refuse(node->line, QStringLiteral("labeled 'continue' doesn't mark a loop"));
    } else {
        while (place > 0 && !isLoop(statements_[place - 1])) --place;
        if (place == 0) return;
        --place;
    }
    leaveWiths(place, node->line);
    emitJumpOnChain(Op::J, statements_[place]->continueChain, node->line);
}

}  // namespace script
