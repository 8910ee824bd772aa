#include "script/atom.h"
#include "script/context.h"
#include "script/generator_nesting.h"

#include <algorithm>

namespace script {

namespace {

/// Binary operators: the plain form, and the form that works on a computed property.
struct OperatorRow {
    int token;
    int assignment;
    Op plain;
    Op onProperty;
    bool isSwapped;  ///< the right side is generated first
};

// clang-format off
constexpr OperatorRow operators[] = {
    {'+', TokenAddAssign, Op::Add, Op::AddX, false},
    {'-', TokenSubAssign, Op::Sub, Op::SubX, false},
    {'*', TokenMulAssign, Op::Mul, Op::MulX, false},
    {'/', TokenDivAssign, Op::Div, Op::DivX, false},
    {'%', TokenModAssign, Op::Mod, Op::ModX, false},
    {'&', TokenAndAssign, Op::BitAnd, Op::BitAndX, false},
    {'|', TokenOrAssign, Op::BitOr, Op::BitOrX, false},
    {'^', TokenXorAssign, Op::BitXor, Op::BitXorX, false},
    {TokenShl, TokenShlAssign, Op::Shl, Op::ShlX, false},
    {TokenShr, TokenShrAssign, Op::Shr, Op::ShrX, false},
    {TokenUShr, TokenUShrAssign, Op::UShr, Op::UShrX, false},
    {'<', 0, Op::Lt, Op::Lt, false},
    {'>', 0, Op::Lt, Op::Lt, true},
    {TokenLessEqual, 0, Op::Le, Op::Le, false},
    {TokenGreaterEqual, 0, Op::Le, Op::Le, true},
    {TokenEqual, 0, Op::Eq, Op::Eq, false},
    {TokenNotEqual, 0, Op::Ne, Op::Ne, false},
};

/// "++" and "--" by place: global, parameter, local, the latter two in an activation; by name, and on a property.
struct StepRow {
    int token;
    bool isPostfix;
    Op global, parameter, local, activationParameter, activationLocal;
    Op byName;
    Op onProperty;
};

constexpr StepRow steps[] = {
    {TokenIncrement, false, Op::IncG, Op::IncA, Op::IncL, Op::IncM, Op::IncLM, Op::PreIncX, Op::PreIncP},
    {TokenDecrement, false, Op::DecG, Op::DecA, Op::DecL, Op::DecAM, Op::DecLM, Op::PreDecX, Op::PreDecP},
    {KindPostIncrement, true, Op::IncG, Op::IncA, Op::IncL, Op::IncM, Op::IncLM, Op::PostIncX, Op::PostIncP},
    {KindPostDecrement, true, Op::DecG, Op::DecA, Op::DecL, Op::DecAM, Op::DecLM, Op::PostDecX, Op::PostDecP},
};
// clang-format on

const OperatorRow* findOperator(int token) {
    for (const OperatorRow& row : operators)
        if (row.token == token) return &row;
    return nullptr;
}

const OperatorRow* findAssignment(int token) {
    for (const OperatorRow& row : operators)
        if (row.assignment != 0 && row.assignment == token) return &row;
    return nullptr;
}

const StepRow* findStep(int kind) {
    for (const StepRow& row : steps)
        if (row.token == kind) return &row;
    return nullptr;
}

bool isMember(const ESNode* node) {
    return node->kind == KindMember || node->kind == KindElement;
}

const QString& noTarget() {
    static const QString text = QStringLiteral("not lsh?");
    return text;
}

}  // namespace

void ESCodeGenerator::generate(ESNode* node, bool wanted) {
    if (!wanted && !node->hasEffects) return;
    const Nesting nesting(*this, node);
    generateExpression(node, wanted);
}

/// The forms that look after an unwanted value themselves; any other value is dropped.
void ESCodeGenerator::generateExpression(ESNode* node, bool wanted) {
    if (node->kind == '=') return generateAssignment(node, wanted);
    if (findAssignment(node->kind) != nullptr) return generateCompound(node, wanted);
    if (findStep(node->kind) != nullptr) return generateStep(node, wanted);
    switch (node->kind) {
        case KindPair:
            return generatePair(node, wanted);
        case '!':
            return generateUnary(node, Op::LogNot, wanted);
        case '~':
            return generateUnary(node, Op::BitNot, wanted);
        default:
            generateValue(node);
            if (!wanted) emit(Op::Drop, node->line);
    }
}

void ESCodeGenerator::generateValue(ESNode* node) {
    switch (node->kind) {
        case KindMinus:
            return generateUnary(node, Op::Neg, true);
        case KindPlus:
            return generateUnary(node, Op::Pos, true);
        case TokenTypeof:
            return generateUnary(node, Op::TypeOf, true);
        case TokenVoid:
            return generateVoid(node);
        case TokenDelete:
            return generateDelete(node);
        case TokenAndAnd:
        case TokenOrOr:
            return generateLogical(node);
        case KindConditional:
            return generateConditional(node);
        case KindCall:
            return generateCall(node);
        case TokenNew:
        case KindNewCall:
            return generateNew(node);
        case KindMember:
        case KindElement:
            return generateMember(node);
        case KindArray:
            return generateArray(node);
        case KindObject:
            return generateObject(node);
        default:
            return findOperator(node->kind) != nullptr ? generateBinary(node) : generateConstant(node);
    }
}

void ESCodeGenerator::generateConstant(const ESNode* node) {
    switch (node->kind) {
        case TokenNumber:
            return emitNumber(*node);
        case TokenString:
            return emitAtom(Op::Str, node->name, node->line);
        case TokenIdentifier:
            return emitGet(node->name, node->line);
        case TokenThis:
            return emit(Op::This, node->line);
        case TokenTrue:
            return emit(Op::True, node->line);
        case TokenFalse:
            return emit(Op::False, node->line);
        case TokenNull:
            return emit(Op::Null, node->line);
        case KindElision:
            return emit(Op::Gap, node->line);
        default:
            emitWithOperand(Op::Closure, static_cast<std::uint32_t>(code_.functions.size()), node->line);
            code_.functions.push_back(node->function->templateIndex);
    }
}

/// Goes down the left side in a loop: sums of thousands of terms are written by programs.
void ESCodeGenerator::generateBinary(ESNode* node) {
    std::vector<ESNode*> spine;
    const OperatorRow* row = findOperator(node->kind);
    for (; row != nullptr && !row->isSwapped; row = findOperator(node->kind)) {
        spine.push_back(node);
        node = node->child[0];
    }
    if (row != nullptr) {
        generate(node->child[1], true);
        generate(node->child[0], true);
        emit(row->plain, node->line);
    } else {
        generate(node, true);
    }
    for (; !spine.empty(); spine.pop_back()) {
        generate(spine.back()->child[1], true);
        emit(findOperator(spine.back()->kind)->plain, spine.back()->line);
    }
}

void ESCodeGenerator::generateLogical(ESNode* node) {
    std::vector<ESNode*> spine;
    const int kind = node->kind;
    for (; node->kind == kind; node = node->child[0]) spine.push_back(node);
    generate(node, true);
    std::uint32_t toEnd = ESNode::endOfChain;
    for (; !spine.empty(); spine.pop_back()) {
        emitJumpOnChain(kind == TokenAndAnd ? Op::LogAnd : Op::LogOr, toEnd, spine.back()->line);
        generate(spine.back()->child[1], true);
        patchChain(toEnd, position());
        toEnd = ESNode::endOfChain;
    }
}

void ESCodeGenerator::generateConditional(ESNode* node) {
    std::uint32_t toSecond = ESNode::endOfChain;
    std::uint32_t toEnd = ESNode::endOfChain;
    generate(node->child[0], true);
    emitJumpOnChain(Op::Jf, toSecond, node->line);
    generate(node->child[1], true);
    emitJumpOnChain(Op::J, toEnd, node->line);
    patchChain(toSecond, position());
    generate(node->child[2], true);
    patchChain(toEnd, position());
}

void ESCodeGenerator::generatePair(ESNode* node, bool wanted) {
    std::vector<ESNode*> spine;
    for (; node->kind == KindPair; node = node->child[0]) spine.push_back(node);
    generate(node, false);
    for (; !spine.empty(); spine.pop_back()) generate(spine.back()->child[1], wanted && spine.size() == 1);
}

void ESCodeGenerator::generateAssignment(ESNode* node, bool wanted) {
    generate(node->child[1], true);
    if (wanted) emit(Op::Dup, node->line);
    generateStore(node->child[0]);
}

/// Pops the value on top into the target.
void ESCodeGenerator::generateStore(ESNode* target) {
    if (target->kind == TokenIdentifier) return emitPut(target->name, target->line);
    if (!isMember(target)) refuse(target->line, noTarget());
    generate(target->child[0], true);
    if (target->kind == KindMember) return emitAtom(Op::PutF, target->name, target->line);
    generate(target->child[1], true);
    emit(Op::PutX, target->line);
}

/// Object and key of a member on the stack.
void ESCodeGenerator::generateKey(ESNode* member) {
    generate(member->child[0], true);
    if (member->kind == KindMember)
        emitAtom(Op::Str, member->name, member->line);
    else
        generate(member->child[1], true);
}

void ESCodeGenerator::generateCompound(ESNode* node, bool wanted) {
    const OperatorRow& row = *findAssignment(node->kind);
    ESNode* target = node->child[0];
    if (target->kind == TokenIdentifier) {
        emitGet(target->name, node->line);
        generate(node->child[1], true);
        emit(row.plain, node->line);
        if (wanted) emit(Op::Dup, node->line);
        return emitPut(target->name, node->line);
    }
    if (!isMember(target)) refuse(node->line, noTarget());
    generate(node->child[1], true);
    generateKey(target);
    emit(row.onProperty, node->line);
    if (!wanted) emit(Op::Drop, node->line);
}

void ESCodeGenerator::generateUnary(ESNode* node, Op op, bool wanted) {
    generate(node->child[0], true);
    emit(wanted ? op : Op::Drop, node->line);
}

void ESCodeGenerator::generateVoid(ESNode* node) {
    if (!node->child[0]->hasEffects) return emit(Op::Undefined, node->line);
    generateUnary(node, Op::Void, true);
}

void ESCodeGenerator::generateDelete(ESNode* node) {
    ESNode* operand = node->child[0];
    if (operand->kind == TokenIdentifier) {
        const bool isByName = resolveName(operand->name).kind == NameKind::ByName;
        return isByName ? emitAtom(Op::DeleteW, operand->name, node->line) : emit(Op::False, node->line);
    }
    if (isMember(operand)) {
        generateKey(operand);
        return emit(Op::DeleteX, node->line);
    }
    generate(operand, false);
    emit(Op::True, node->line);
}

void ESCodeGenerator::generateStep(ESNode* node, bool wanted) {
    const StepRow& row = *findStep(node->kind);
    ESNode* operand = node->child[0];
    if (operand->kind == TokenIdentifier) return generateNameStep(node, operand->name, wanted);
    if (!isMember(operand)) refuse(node->line, noTarget());
    generateKey(operand);
    emit(row.onProperty, node->line);
    if (!wanted) emit(Op::Drop, node->line);
}

void ESCodeGenerator::generateNameStep(ESNode* node, const ESAtom* name, bool wanted) {
    const StepRow& row = *findStep(node->kind);
    const NamePlace place = resolveName(name);
    if (place.kind == NameKind::ByName) {
        emitAtom(Op::Str, name, node->line);
        emit(row.byName, node->line);
        if (!wanted) emit(Op::Drop, node->line);
        return;
    }
    Op op = row.global;
    if (place.kind == NameKind::Parameter) op = hasActivation() ? row.activationParameter : row.parameter;
    if (place.kind == NameKind::Local) op = hasActivation() ? row.activationLocal : row.local;
    if (wanted && row.isPostfix) emitGet(name, node->line);
    emitWithOperand(op, place.index, node->line);
    if (wanted && !row.isPostfix) emitGet(name, node->line);
}

std::uint32_t ESCodeGenerator::generateList(ESNode* first) {
    std::uint32_t count = 0;
    for (ESNode* item = first; item != nullptr; item = item->next, ++count) generate(item, true);
    return count;
}

void ESCodeGenerator::generateCall(ESNode* node) {
    const std::uint32_t count = generateList(node->child[1]);
    ESNode* callee = node->child[0];
    switch (callee->kind) {
        case TokenIdentifier:
            return generateNameCall(callee, count);
        case KindMember:
            generate(callee->child[0], true);
            emit(Op::CallF, node->line);
            emitOperand(atomOperand(callee->name), node->line);
            return emitOperand(count, node->line);
        case KindElement:
            generate(callee->child[0], true);
            generate(callee->child[1], true);
            return emitWithOperand(Op::CallX, count, node->line);
        default:
            generate(callee, true);
            emitWithOperand(Op::CallV, count, node->line);
    }
}

void ESCodeGenerator::generateNameCall(const ESNode* callee, std::uint32_t count) {
    const NamePlace place = resolveName(callee->name);
    switch (place.kind) {
        case NameKind::ByName:
            return emitWithTwoOperands(Op::CallW, atomOperand(callee->name), count, callee->line);
        case NameKind::Global:
            return emitWithTwoOperands(Op::CallG, place.index, count, callee->line);
        case NameKind::Parameter:
            return emitWithTwoOperands(hasActivation() ? Op::CallAM : Op::CallA, place.index, count,
                                       callee->line);
        case NameKind::Local:
            return emitWithTwoOperands(hasActivation() ? Op::CallLM : Op::CallL, place.index, count,
                                       callee->line);
    }
}

void ESCodeGenerator::generateNew(ESNode* node) {
    const std::uint32_t count = generateList(node->child[1]);
    generate(node->child[0], true);
    if (node->kind == TokenNew)
        emit(Op::New, node->line);
    else
        emitWithOperand(Op::NewA, count, node->line);
}

void ESCodeGenerator::generateMember(ESNode* node) {
    std::vector<ESNode*> spine;
    for (; isMember(node); node = node->child[0]) spine.push_back(node);
    generate(node, true);
    for (; !spine.empty(); spine.pop_back()) {
        ESNode* member = spine.back();
        if (member->kind == KindMember) {
            emitAtom(Op::GetF, member->name, member->line);
        } else {
            generate(member->child[1], true);
            emit(Op::GetX, member->line);
        }
    }
}

void ESCodeGenerator::generateArray(ESNode* node) {
    const std::uint32_t count = generateList(node->child[0]);
    emitWithOperand(Op::MkArray, count, node->line);
}

void ESCodeGenerator::generateObject(ESNode* node) {
    emit(Op::NewObj, node->line);
    for (ESNode* member = node->child[0]; member != nullptr; member = member->next) {
        generate(member->child[0], true);
        emitAtom(Op::InitF, member->name, member->line);
    }
}

}  // namespace script
