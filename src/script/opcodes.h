#pragma once

#include "script/code.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <span>

/// The instructions of the stack machine. Suffixes tell where an operand lives: W a name of the scope chain,
/// F a named property, G a slot of the global object, A a parameter, L a local (AM and LM the same in the
/// activation object), X a computed key on the stack.
namespace script {

/// Numbers above 109 carry the forms that the first 110 have no room for: calls of any value, steps of a
/// property, and places of an array literal that stay empty.
enum class Op : std::uint8_t {
    Num = 0,
    Num0 = 1,
    Num1 = 2,
    Num2 = 3,
    Num3 = 4,
    Num4 = 5,
    NumM1 = 6,
    Null = 7,
    True = 8,
    False = 9,
    Undefined = 10,
    This = 11,
    Str = 12,
    New = 13,
    NewA = 14,
    Drop = 15,
    Dup = 16,
    Void = 17,
    TypeOf = 18,
    Enum = 19,
    Next = 20,
    Closure = 21,
    MkArray = 22,
    NewObj = 23,
    With = 24,
    EndWith = 25,
    InitF = 26,
    CallW = 27,
    CallF = 28,
    CallG = 29,
    CallA = 30,
    CallAM = 31,
    CallL = 32,
    CallLM = 33,
    CallX = 34,
    GetW = 35,
    GetF = 36,
    GetG = 37,
    GetA = 38,
    GetL = 39,
    GetAM = 40,
    GetLM = 41,
    GetX = 42,
    PutW = 43,
    PutF = 44,
    PutG = 45,
    PutA = 46,
    PutL = 47,
    PutAM = 48,
    PutLM = 49,
    PutX = 50,
    Add = 51,
    AddX = 52,
    Sub = 53,
    SubX = 54,
    Mul = 55,
    MulX = 56,
    Div = 57,
    DivX = 58,
    Mod = 59,
    ModX = 60,
    BitAnd = 61,
    BitAndX = 62,
    BitOr = 63,
    BitOrX = 64,
    BitXor = 65,
    BitXorX = 66,
    Shl = 67,
    ShlX = 68,
    Shr = 69,
    ShrX = 70,
    UShr = 71,
    UShrX = 72,
    IncG = 74,
    IncA = 75,
    IncL = 76,
    IncM = 77,
    IncLM = 78,
    DecG = 80,
    DecA = 81,
    DecL = 82,
    DecAM = 83,
    DecLM = 84,
    PreIncX = 85,
    PostIncX = 86,
    PreDecX = 87,
    PostDecX = 88,
    DeleteW = 89,
    DeleteX = 90,
    Lt = 91,
    Le = 92,
    Eq = 93,
    Ne = 94,
    Identity = 95,
    NotIdentity = 96,
    LogNot = 97,
    BitNot = 98,
    Pos = 99,
    Neg = 100,
    LogAnd = 101,
    LogOr = 102,
    J = 103,
    Jt = 104,
    Jf = 105,
    JtDrop = 106,
    Jlt = 107,
    Ret = 108,
    RetU = 109,
    CallV = 110,
    PreIncP = 111,
    PostIncP = 112,
    PreDecP = 113,
    PostDecP = 114,
    Gap = 115,
};

/// What follows an opcode, 16 bits each, high byte first.
enum class Operands : std::uint8_t {
    None,
    Number,     ///< an index in the table of numbers
    Template,   ///< an index in the table of functions
    Atom,       ///< an index in the table of atoms
    Slot,       ///< a slot
    Count,      ///< a number of values, which the instruction pops
    Target,     ///< a byte offset to jump to
    AtomCount,  ///< an atom and a count
    SlotCount,  ///< a slot and a count
};

/// One instruction. `pops` and `pushes` hold when the next instruction follows, `pops` without the count;
/// `keptAtJump` is what stands in place of the popped values when it jumps.
struct OpRow {
    Op op;
    const char* name;  ///< as the listing prints it
    Operands operands;
    int pops;
    int pushes;
    int keptAtJump;
    const char* effect;
};

/// All instructions in the order of their numbers.
std::span<const OpRow> opRows();

/// The row of an opcode byte, or null when the number is free.
const OpRow* findOpRow(std::uint8_t byte);

/// The bytes of the operands.
std::size_t operandBytes(Operands operands);

inline std::uint32_t readOperand(const std::uint8_t* at) {
    return static_cast<std::uint32_t>(at[0] << 8 | at[1]);
}

/// The instruction at `offset`: the offset, the name and the operands. `next` becomes the offset behind it.
QString listInstruction(const ESCode& code, std::size_t offset, std::size_t* next = nullptr);

/// How deep the value stack gets in `code`. Raises ESFatalError "compiler error: stack not balanced" if an
/// instruction can be reached with two depths.
std::uint32_t measureStack(const ESCode& code);

}  // namespace script
