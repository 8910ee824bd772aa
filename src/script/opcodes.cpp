#include "script/opcodes.h"

#include "script/exception.h"

#include <array>
#include <vector>

namespace script {

namespace {

// clang-format off
constexpr OpRow rows[] = {
    {Op::Num, "NUM", Operands::Number, 0, 1, 0, "pushes the number k of the code's table"},
    {Op::Num0, "NUM_0", Operands::None, 0, 1, 0, "pushes 0"},
    {Op::Num1, "NUM_1", Operands::None, 0, 1, 0, "pushes 1"},
    {Op::Num2, "NUM_2", Operands::None, 0, 1, 0, "pushes 2"},
    {Op::Num3, "NUM_3", Operands::None, 0, 1, 0, "pushes 3"},
    {Op::Num4, "NUM_4", Operands::None, 0, 1, 0, "pushes 4"},
    {Op::NumM1, "NUM_M1", Operands::None, 0, 1, 0, "pushes -1"},
    {Op::Null, "NULL", Operands::None, 0, 1, 0, "pushes null"},
    {Op::True, "TRUE", Operands::None, 0, 1, 0, "pushes true"},
    {Op::False, "FALSE", Operands::None, 0, 1, 0, "pushes false"},
    {Op::Undefined, "UNDEFINED", Operands::None, 0, 1, 0, "pushes undefined"},
    {Op::This, "THIS", Operands::None, 0, 1, 0, "pushes the object of the call"},
    {Op::Str, "STR", Operands::Atom, 0, 1, 0, "pushes the text a"},
    {Op::New, "NEW", Operands::None, 1, 1, 0, "constructs with no arguments"},
    {Op::NewA, "NEWA", Operands::Count, 1, 1, 0, "constructs with the n arguments below the constructor"},
    {Op::Drop, "DROP", Operands::None, 1, 0, 0, "pops"},
    {Op::Dup, "DUP", Operands::None, 1, 2, 0, "pushes the top again"},
    {Op::Void, "VOID", Operands::None, 1, 1, 0, "makes the top undefined"},
    {Op::TypeOf, "TYPEOF", Operands::None, 1, 1, 0, "makes the top the name of its type"},
    {Op::Enum, "ENUM", Operands::None, 1, 1, 0, "makes the top an object that lists its names"},
    {Op::Next, "NEXT", Operands::Target, 1, 0, 1, "makes the enumeration its next name and jumps, or pops it"},
    {Op::Closure, "CLOSURE", Operands::Template, 0, 1, 0, "pushes a function of the template k"},
    {Op::MkArray, "MKARRAY", Operands::Count, 0, 1, 0, "makes an array of the top n values"},
    {Op::NewObj, "NEWOBJ", Operands::None, 0, 1, 0, "pushes an empty object"},
    {Op::With, "WITH", Operands::None, 1, 0, 0, "pops an object and puts it at the head of the scope chain"},
    {Op::EndWith, "ENDWITH", Operands::None, 0, 0, 0, "takes the head off the scope chain"},
    {Op::InitF, "INITF", Operands::Atom, 2, 1, 0, "stores the top under a in the object below, which becomes the top"},
    {Op::CallW, "CALLW", Operands::AtomCount, 0, 1, 0, "calls the function named a of the scope chain"},
    {Op::CallF, "CALLF", Operands::AtomCount, 1, 1, 0, "calls the function a of the object on top"},
    {Op::CallG, "CALLG", Operands::SlotCount, 0, 1, 0, "calls the function in global slot i"},
    {Op::CallA, "CALLA", Operands::SlotCount, 0, 1, 0, "calls the function in parameter i"},
    {Op::CallAM, "CALLAM", Operands::SlotCount, 0, 1, 0, "calls the function in parameter i of the activation object"},
    {Op::CallL, "CALLL", Operands::SlotCount, 0, 1, 0, "calls the function in local i"},
    {Op::CallLM, "CALLLM", Operands::SlotCount, 0, 1, 0, "calls the function in local i of the activation object"},
    {Op::CallX, "CALLX", Operands::Count, 2, 1, 0, "calls the function under the key on top of the object below"},
    {Op::GetW, "GETW", Operands::Atom, 0, 1, 0, "pushes the value of the name a"},
    {Op::GetF, "GETF", Operands::Atom, 1, 1, 0, "makes the top its property a"},
    {Op::GetG, "GETG", Operands::Slot, 0, 1, 0, "pushes global slot i"},
    {Op::GetA, "GETA", Operands::Slot, 0, 1, 0, "pushes parameter i"},
    {Op::GetL, "GETL", Operands::Slot, 0, 1, 0, "pushes local i"},
    {Op::GetAM, "GETAM", Operands::Slot, 0, 1, 0, "pushes parameter i of the activation object"},
    {Op::GetLM, "GETLM", Operands::Slot, 0, 1, 0, "pushes local i of the activation object"},
    {Op::GetX, "GETX", Operands::None, 2, 1, 0, "makes key and object below the property"},
    {Op::PutW, "PUTW", Operands::Atom, 1, 0, 0, "pops into the name a"},
    {Op::PutF, "PUTF", Operands::Atom, 2, 0, 0, "pops the object and the value below into its property a"},
    {Op::PutG, "PUTG", Operands::Slot, 1, 0, 0, "pops into global slot i"},
    {Op::PutA, "PUTA", Operands::Slot, 1, 0, 0, "pops into parameter i"},
    {Op::PutL, "PUTL", Operands::Slot, 1, 0, 0, "pops into local i"},
    {Op::PutAM, "PUTAM", Operands::Slot, 1, 0, 0, "pops into parameter i of the activation object"},
    {Op::PutLM, "PUTLM", Operands::Slot, 1, 0, 0, "pops into local i of the activation object"},
    {Op::PutX, "PUTX", Operands::None, 3, 0, 0, "pops key, object and value into the property"},
    {Op::Add, "ADD", Operands::None, 2, 1, 0, "makes two values the sum or joined text"},
    {Op::AddX, "ADDX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::Sub, "SUB", Operands::None, 2, 1, 0, "makes two values the difference"},
    {Op::SubX, "SUBX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::Mul, "MUL", Operands::None, 2, 1, 0, "makes two values the product"},
    {Op::MulX, "MULX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::Div, "DIV", Operands::None, 2, 1, 0, "makes two values the quotient"},
    {Op::DivX, "DIVX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::Mod, "MOD", Operands::None, 2, 1, 0, "makes two values the remainder"},
    {Op::ModX, "MODX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::BitAnd, "BITAND", Operands::None, 2, 1, 0, "makes two values the bitwise and"},
    {Op::BitAndX, "BITANDX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::BitOr, "BITOR", Operands::None, 2, 1, 0, "makes two values the bitwise or"},
    {Op::BitOrX, "BITORX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::BitXor, "BITXOR", Operands::None, 2, 1, 0, "makes two values the bitwise exclusive or"},
    {Op::BitXorX, "BITXORX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::Shl, "SHL", Operands::None, 2, 1, 0, "makes two values the left one shifted left"},
    {Op::ShlX, "SHLX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::Shr, "SHR", Operands::None, 2, 1, 0, "makes two values the left one shifted right with its sign"},
    {Op::ShrX, "SHRX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::UShr, "USHR", Operands::None, 2, 1, 0, "makes two values the left one shifted right without a sign"},
    {Op::UShrX, "USHRX", Operands::None, 3, 1, 0, "the same with the property of key and object, stored back, and the operand below"},
    {Op::IncG, "INCG", Operands::Slot, 0, 0, 0, "adds 1 to global slot i"},
    {Op::IncA, "INCA", Operands::Slot, 0, 0, 0, "adds 1 to parameter i"},
    {Op::IncL, "INCL", Operands::Slot, 0, 0, 0, "adds 1 to local i"},
    {Op::IncM, "INCM", Operands::Slot, 0, 0, 0, "adds 1 to parameter i of the activation object"},
    {Op::IncLM, "INCLM", Operands::Slot, 0, 0, 0, "adds 1 to local i of the activation object"},
    {Op::DecG, "DECG", Operands::Slot, 0, 0, 0, "subtracts 1 from global slot i"},
    {Op::DecA, "DECA", Operands::Slot, 0, 0, 0, "subtracts 1 from parameter i"},
    {Op::DecL, "DECL", Operands::Slot, 0, 0, 0, "subtracts 1 from local i"},
    {Op::DecAM, "DECAM", Operands::Slot, 0, 0, 0, "subtracts 1 from parameter i of the activation object"},
    {Op::DecLM, "DECLM", Operands::Slot, 0, 0, 0, "subtracts 1 from local i of the activation object"},
    {Op::PreIncX, "PREINCX", Operands::None, 1, 1, 0, "adds 1 to the variable named on top, which becomes its number"},
    {Op::PostIncX, "POSTINCX", Operands::None, 1, 1, 0, "the same, but the top becomes the old number"},
    {Op::PreDecX, "PREDECX", Operands::None, 1, 1, 0, "subtracts 1 from the variable named on top, which becomes its number"},
    {Op::PostDecX, "POSTDECX", Operands::None, 1, 1, 0, "the same, but the top becomes the old number"},
    {Op::DeleteW, "DELETEW", Operands::Atom, 0, 1, 0, "deletes the name a from the scope chain and pushes whether"},
    {Op::DeleteX, "DELETEX", Operands::None, 2, 1, 0, "deletes the property of key and object"},
    {Op::Lt, "LT", Operands::None, 2, 1, 0, "compares: less"},
    {Op::Le, "LE", Operands::None, 2, 1, 0, "compares: less or equal"},
    {Op::Eq, "EQ", Operands::None, 2, 1, 0, "compares: equal after conversion"},
    {Op::Ne, "NE", Operands::None, 2, 1, 0, "compares: not equal after conversion"},
    {Op::Identity, "IDENTITY", Operands::None, 2, 1, 0, "compares: equal without conversion"},
    {Op::NotIdentity, "NOTIDENTITY", Operands::None, 2, 1, 0, "compares: not equal without conversion"},
    {Op::LogNot, "LOGNOT", Operands::None, 1, 1, 0, "inverts the truth of the top"},
    {Op::BitNot, "BITNOT", Operands::None, 1, 1, 0, "inverts the bits of the top"},
    {Op::Pos, "POS", Operands::None, 1, 1, 0, "makes the top a number"},
    {Op::Neg, "NEG", Operands::None, 1, 1, 0, "makes the top a number and flips its sign"},
    {Op::LogAnd, "LOGAND", Operands::Target, 1, 0, 1, "pops what is true, or jumps and keeps it"},
    {Op::LogOr, "LOGOR", Operands::Target, 1, 0, 1, "pops what is false, or jumps and keeps it"},
    {Op::J, "J", Operands::Target, 0, 0, 0, "jumps"},
    {Op::Jt, "JT", Operands::Target, 1, 0, 0, "pops and jumps if it was true"},
    {Op::Jf, "JF", Operands::Target, 1, 0, 0, "pops and jumps if it was false"},
    {Op::JtDrop, "JT_DROP", Operands::Target, 2, 1, 0, "pops; if it was true, pops once more and jumps"},
    {Op::Jlt, "JLT", Operands::Target, 2, 0, 0, "pops two and jumps if the lower was less"},
    {Op::Ret, "RET", Operands::None, 1, 0, 0, "returns the top"},
    {Op::RetU, "RETU", Operands::None, 0, 0, 0, "returns undefined"},
    {Op::CallV, "CALLV", Operands::Count, 1, 1, 0, "calls the function on top with the n arguments below it"},
    {Op::PreIncP, "PREINCP", Operands::None, 2, 1, 0, "adds 1 to the property of key and object and pushes its number"},
    {Op::PostIncP, "POSTINCP", Operands::None, 2, 1, 0, "the same, but pushes the old number"},
    {Op::PreDecP, "PREDECP", Operands::None, 2, 1, 0, "subtracts 1 from the property of key and object and pushes its number"},
    {Op::PostDecP, "POSTDECP", Operands::None, 2, 1, 0, "the same, but pushes the old number"},
    {Op::Gap, "GAP", Operands::None, 0, 1, 0, "pushes what makes no element"},
};
// clang-format on

constexpr std::size_t byteValues = 256;

constexpr std::array<const OpRow*, byteValues> rowByByte = [] {
    std::array<const OpRow*, byteValues> table{};
    for (const OpRow& row : rows) table[static_cast<std::uint8_t>(row.op)] = &row;
    return table;
}();

constexpr bool rowsAscend = [] {
    for (std::size_t i = 1; i < std::size(rows); ++i)
        if (rows[i].op <= rows[i - 1].op) return false;
    return true;
}();
static_assert(rowsAscend);

bool hasCount(Operands operands) {
    return operands == Operands::Count || operands == Operands::AtomCount || operands == Operands::SlotCount;
}

const OpRow& rowAt(const ESCode& code, std::size_t offset) {
    const OpRow* row = offset < code.bytes.size() ? findOpRow(code.bytes[offset]) : nullptr;
    if (row == nullptr) throw ESFatalError{QStringLiteral("compiler error: unknown opcode")};
    return *row;
}

/// The depths at which instructions are reached; -1 where none is known yet.
class StackMeasure {
public:
    explicit StackMeasure(const ESCode& code) : code_(code), depths_(code.bytes.size(), -1) {}

    std::uint32_t run() {
        reach(0, 0);
        while (!pending_.empty()) {
            const std::size_t offset = pending_.back();
            pending_.pop_back();
            follow(offset);
        }
        return static_cast<std::uint32_t>(deepest_);
    }

private:
    void follow(std::size_t offset) {
        const OpRow& row = rowAt(code_, offset);
        const std::size_t size = operandBytes(row.operands);
        const std::uint8_t* operands = code_.bytes.data() + offset + 1;
        std::int64_t base = depths_[offset] - row.pops;
        if (hasCount(row.operands)) base -= readOperand(operands + size - 2);
        if (base < 0) throw ESFatalError{QStringLiteral("compiler error: stack not balanced")};
        if (row.operands == Operands::Target) reach(readOperand(operands), jumpBase(row, base));
        const bool ends = row.op == Op::J || row.op == Op::Ret || row.op == Op::RetU;
        if (!ends) reach(offset + 1 + size, base + row.pushes);
    }

    static std::int64_t jumpBase(const OpRow& row, std::int64_t base) { return base + row.keptAtJump; }

    void reach(std::size_t offset, std::int64_t depth) {
        rowAt(code_, offset);
        if (depths_[offset] == -1) {
            depths_[offset] = depth;
            if (depth > deepest_) deepest_ = depth;
            pending_.push_back(offset);
        } else if (depths_[offset] != depth) {
            throw ESFatalError{QStringLiteral("compiler error: stack not balanced")};
        }
    }

    const ESCode& code_;
    std::vector<std::int64_t> depths_;
    std::vector<std::size_t> pending_;
    std::int64_t deepest_ = 0;
};

QString operandText(const ESCode& code, Operands operands, const std::uint8_t* at) {
    const std::uint32_t first = readOperand(at);
    const bool isName = operands == Operands::Atom || operands == Operands::AtomCount;
    if (isName && first < code.atoms.size()) return code.atoms[first]->text;
    return QString::number(first);
}

}  // namespace

std::span<const OpRow> opRows() {
    return rows;
}

const OpRow* findOpRow(std::uint8_t byte) {
    return rowByByte[byte];
}

std::size_t operandBytes(Operands operands) {
    switch (operands) {
        case Operands::None:
            return 0;
        case Operands::AtomCount:
        case Operands::SlotCount:
            return 4;
        default:
            return 2;
    }
}

QString listInstruction(const ESCode& code, std::size_t offset, std::size_t* next) {
    constexpr int hexadecimal = 16;
    const OpRow* row = findOpRow(code.bytes[offset]);
    const std::size_t size = row != nullptr ? operandBytes(row->operands) : 0;
    const std::size_t end = offset + 1 + size;
    if (next != nullptr) *next = end;
    QString text = QStringLiteral("%1:  ").arg(offset, 4, hexadecimal, QLatin1Char('0'));
    text += row != nullptr ? QString::fromLatin1(row->name) : QString::number(code.bytes[offset]);
    if (size == 0 || end > code.bytes.size()) return text;
    const std::uint8_t* operands = code.bytes.data() + offset + 1;
    text += QLatin1Char('\t') + operandText(code, row->operands, operands);
    if (size > 2) text += QLatin1Char('\t') + QString::number(readOperand(operands + 2));
    return text;
}

std::uint32_t measureStack(const ESCode& code) {
    return StackMeasure(code).run();
}

}  // namespace script
