// The part of the code generator that writes instructions and decides where names live.
#include "script/atom.h"
#include "script/code_generator.h"
#include "script/context.h"
#include "script/limits.h"
#include "script/native_error.h"
#include "script/parser.h"

#include <bit>

namespace script {

namespace {

[[noreturn]] void refuseSize() {
    throw ESFatalError{QStringLiteral("compiler error: patch constant too large")};
}

/// The forms of an access by place: by name, global, parameter, local, and the latter two in an activation.
struct AccessRow {
    Op byName, global, parameter, local, activationParameter, activationLocal;
};
constexpr AccessRow getRow{Op::GetW, Op::GetG, Op::GetA, Op::GetL, Op::GetAM, Op::GetLM};
constexpr AccessRow putRow{Op::PutW, Op::PutG, Op::PutA, Op::PutL, Op::PutAM, Op::PutLM};

Op slotForm(const AccessRow& row, NameKind kind, bool hasActivation) {
    if (kind == NameKind::Global) return row.global;
    if (kind == NameKind::Parameter) return hasActivation ? row.activationParameter : row.parameter;
    return hasActivation ? row.activationLocal : row.local;
}

}  // namespace

void addVariable(ESContext& context, FunctionUnit& unit, const ESAtom* name, std::uint32_t attributes,
                 bool replace) {
    if (unit.isProgram) {
        if (context.global->properties.find(name) == nullptr)
            context.global->properties.append(context.arena(), name, attributes, ESValue());
        return;
    }
    ESCode& code = *unit.code;
    const auto found = unit.variableIndex.constFind(name);
    if (found != unit.variableIndex.constEnd()) {
        if (!replace) return;
        code.variables[*found].name = ESContext::hiddenName();
    }
    ++((attributes & Parameter) != 0 ? code.parameterCount : code.localCount);
    unit.variableIndex.insert(name, static_cast<std::uint32_t>(code.variables.size()));
    code.variables.push_back({name, ESValue(), attributes});
}

ESCodeGenerator::ESCodeGenerator(ESContext& context, FunctionUnit& unit)
    : context_(context), unit_(unit), code_(*unit.code) {}

void ESCodeGenerator::refuse(std::uint32_t line, const QString& message) {
    context_.throwErrorAt(line, context_.syntaxErrorClass->constructorFunction(), message);
}

void ESCodeGenerator::emitByte(std::uint32_t byte, std::uint32_t line) {
    code_.bytes.push_back(static_cast<std::uint8_t>(byte));
    code_.lines.push_back(line);
}

void ESCodeGenerator::emitOperand(std::uint32_t operand, std::uint32_t line) {
    if (operand >= limits::operandEnd) refuseSize();
    constexpr unsigned byteBits = 8;
    emitByte(operand >> byteBits, line);
    emitByte(operand & 0xff, line);
}

void ESCodeGenerator::emitWithOperand(Op op, std::uint32_t operand, std::uint32_t line) {
    emit(op, line);
    emitOperand(operand, line);
}

void ESCodeGenerator::emitWithTwoOperands(Op op, std::uint32_t a, std::uint32_t b, std::uint32_t line) {
    emitWithOperand(op, a, line);
    emitOperand(b, line);
}

std::uint32_t ESCodeGenerator::atomOperand(const ESAtom* atom) {
    const auto found = unit_.atomIndex.constFind(atom);
    if (found != unit_.atomIndex.constEnd()) return *found;
    const auto index = static_cast<std::uint32_t>(code_.atoms.size());
    code_.atoms.push_back(atom);
    unit_.atomIndex.insert(atom, index);
    return index;
}

void ESCodeGenerator::emitAtom(Op op, const ESAtom* atom, std::uint32_t line) {
    emitWithOperand(op, atomOperand(atom), line);
}

void ESCodeGenerator::emitNumber(const ESNode& node) {
    constexpr Op small[] = {Op::Num0, Op::Num1, Op::Num2, Op::Num3, Op::Num4};
    const double number = code_.numbers[node.numberIndex];
    for (std::size_t i = 0; i < std::size(small); ++i)
        if (number == static_cast<double>(i)) return emit(small[i], node.line);
    emitWithOperand(Op::Num, node.numberIndex, node.line);
}

void ESCodeGenerator::emitJumpOnChain(Op op, std::uint32_t& chain, std::uint32_t line) {
    emit(op, line);
    const std::uint32_t head = position();
    emitOperand(chain, line);
    chain = head;
}

void ESCodeGenerator::patchChain(std::uint32_t chain, std::uint32_t target) {
    constexpr unsigned byteBits = 8;
    while (chain != ESNode::endOfChain) {
        if (chain >= limits::operandEnd || target >= limits::operandEnd) refuseSize();
        const std::uint32_t next = readOperand(code_.bytes.data() + chain);
        code_.bytes[chain] = static_cast<std::uint8_t>(target >> byteBits);
        code_.bytes[chain + 1] = static_cast<std::uint8_t>(target & 0xff);
        chain = next;
    }
}

void ESCodeGenerator::needActivations() {
    // Once a function needs one, so do all around it.
    for (FunctionUnit* unit = &unit_; !unit->isProgram && !unit->code->needsActivation;) {
        unit->code->needsActivation = true;
        if (unit->enclosing == nullptr) break;
        unit = unit->enclosing;
    }
}

void ESCodeGenerator::declareArguments() {
    if (unit_.declaresArguments) return;
    unit_.declaresArguments = true;
    addVariable(context_, unit_, knownAtoms().arguments, DontEnumerate, true);
}

NamePlace ESCodeGenerator::resolveName(const ESAtom* atom) {
    if (isFirstPass_ && !unit_.isProgram) {
        if (atom == knownAtoms().arguments) {
            needActivations();
            declareArguments();
        } else if (atom == knownAtoms().eval) {
            code_.usesArguments = true;
            declareArguments();
        }
    }
    if (withDepth_ > 0) {
        needActivations();
        return {NameKind::ByName, 0};
    }
    if (!unit_.isProgram) {
        if (const auto own = unit_.variableIndex.constFind(atom); own != unit_.variableIndex.constEnd()) {
            const bool isParameter = (code_.variables[*own].attributes & Parameter) != 0;
            if (isParameter) return {NameKind::Parameter, *own};
            return {NameKind::Local, *own - code_.parameterCount};
        }
    }
    bool isByName = unit_.isInsideWith;
    for (const FunctionUnit* unit = unit_.enclosing; unit != nullptr && !unit->isProgram && !isByName;
         unit = unit->enclosing)
        isByName = unit->variableIndex.contains(atom);
    if (isByName) {
        needActivations();
        return {NameKind::ByName, 0};
    }
    PropertyVector& globals = context_.global->properties;
    const ESProperty* slot = globals.find(atom);
    if (slot == nullptr) slot = &globals.append(context_.arena(), atom, NoAttributes, ESValue());
    return {NameKind::Global, static_cast<std::uint32_t>(slot - globals.begin())};
}

void ESCodeGenerator::emitGet(const ESAtom* name, std::uint32_t line) {
    const NamePlace place = resolveName(name);
    if (place.kind == NameKind::ByName) return emitAtom(Op::GetW, name, line);
    emitWithOperand(slotForm(getRow, place.kind, hasActivation()), place.index, line);
}

void ESCodeGenerator::emitPut(const ESAtom* name, std::uint32_t line) {
    const NamePlace place = resolveName(name);
    if (place.kind == NameKind::ByName) return emitAtom(Op::PutW, name, line);
    emitWithOperand(slotForm(putRow, place.kind, hasActivation()), place.index, line);
}

}  // namespace script
