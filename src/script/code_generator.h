#pragma once

#include "script/opcodes.h"
#include "script/tree.h"

#include <cstdint>
#include <vector>

namespace script {

class ESContext;

/// Where a name lives.
enum class NameKind : std::uint8_t {
    ByName,     ///< searched in the scope chain while the script runs
    Global,     ///< a slot of the global object
    Parameter,  ///< a parameter of the function
    Local,      ///< a local of the function
};

struct NamePlace {
    NameKind kind;
    std::uint32_t index;  ///< the slot, unless by name
};

/// Writes the byte code of one function or program from its syntax tree. A refusal is a SyntaxError of the
/// context at the line of the node; a code too large for its operands an ESFatalError.
class ESCodeGenerator {
public:
    ESCodeGenerator(ESContext& context, FunctionUnit& unit);

    void generateFunction();
    void generateProgram();

private:
    class Nesting;

    // Emission.
    std::uint32_t position() const { return static_cast<std::uint32_t>(code_.bytes.size()); }
    void emitByte(std::uint32_t byte, std::uint32_t line);
    void emit(Op op, std::uint32_t line) { emitByte(static_cast<std::uint32_t>(op), line); }
    void emitOperand(std::uint32_t operand, std::uint32_t line);
    void emitWithOperand(Op op, std::uint32_t operand, std::uint32_t line);
    void emitWithTwoOperands(Op op, std::uint32_t a, std::uint32_t b, std::uint32_t line);
    void emitAtom(Op op, const ESAtom* atom, std::uint32_t line);
    void emitNumber(const ESNode& node);
    /// A jump whose operand holds the old head of the chain and becomes the new head.
    void emitJumpOnChain(Op op, std::uint32_t& chain, std::uint32_t line);
    void patchChain(std::uint32_t chain, std::uint32_t target);
    std::uint32_t atomOperand(const ESAtom* atom);

    // Names.
    NamePlace resolveName(const ESAtom* atom);
    void declareArguments();
    void needActivations();
    void emitGet(const ESAtom* name, std::uint32_t line);
    void emitPut(const ESAtom* name, std::uint32_t line);
    bool hasActivation() const { return !unit_.isProgram && code_.needsActivation; }

    // Statements.
    void generateBody();
    void generateOnce();
    void resetChains();
    void generateStatement(ESNode* node, bool wanted);
    void generateStatementCode(ESNode* node, bool wanted);
    void generateBlock(const ESNode* block, bool wanted);
    void generateVar(const ESNode* node);
    void generateWhile(ESNode* node);
    void generateDo(ESNode* node);
    void generateFor(ESNode* node);
    void generateForTest(const ESNode* test, std::uint32_t top, std::uint32_t line);
    void generateForIn(ESNode* node);
    void generateIf(const ESNode* node);
    void generateReturn(const ESNode* node);
    void generateWith(ESNode* node);
    void generateSwitch(const ESNode* node);
    void generateBreak(const ESNode* node);
    void generateContinue(const ESNode* node);
    void leaveWiths(std::size_t statement, std::uint32_t line);
    std::size_t findLabel(const ESNode* node) const;

    // Expressions.
    void generate(ESNode* node, bool wanted);
    void generateExpression(ESNode* node, bool wanted);
    void generateValue(ESNode* node);
    void generateConstant(const ESNode* node);
    void generateBinary(ESNode* node);
    void generateLogical(ESNode* node);
    void generateConditional(ESNode* node);
    void generatePair(ESNode* node, bool wanted);
    void generateAssignment(ESNode* node, bool wanted);
    void generateCompound(ESNode* node, bool wanted);
    void generateStore(ESNode* target);
    void generateKey(ESNode* member);
    void generateUnary(ESNode* node, Op op, bool wanted);
    void generateVoid(ESNode* node);
    void generateDelete(ESNode* node);
    void generateStep(ESNode* node, bool wanted);
    void generateNameStep(ESNode* node, const ESAtom* name, bool wanted);
    void generateCall(ESNode* node);
    void generateNameCall(const ESNode* callee, std::uint32_t count);
    void generateNew(ESNode* node);
    void generateMember(ESNode* node);
    void generateArray(ESNode* node);
    void generateObject(ESNode* node);
    std::uint32_t generateList(ESNode* first);

    [[noreturn]] void refuse(std::uint32_t line, const QString& message);

    ESContext& context_;
    FunctionUnit& unit_;
    ESCode& code_;
    std::vector<ESNode*> statements_;  ///< the statements around the one in hand
    std::vector<ESNode*> chained_;     ///< every node whose chains were used in this pass
    bool isFirstPass_ = true;
    int withDepth_ = 0;
    int nesting_ = 0;
};

}  // namespace script
