#pragma once

#include "expressions/token_reader.h"
#include "expressions/type.h"

namespace expressions {

/// Reads the names of types. Declarators, whose array sizes are expressions, are `ExpressionReader`'s.
class TypeReader {
public:
    TypeReader(ExpressionParser& parser, TokenReader& tokens) : parser_(parser), tokens_(tokens) {}

    /// A simple type or one that the host knows by name; null when none stands here.
    TypePtr readType();
    /// What may stand in a cast: a structure, a register type or what `readType` reads.
    TypePtr readCastType();

private:
    TypePtr readUserType();
    TypePtr readStruct();
    StructField readStructField();
    TypePtr readRegister();
    std::uint32_t readNumber(const char* message);

    ExpressionParser& parser_;
    TokenReader& tokens_;
};

}  // namespace expressions
