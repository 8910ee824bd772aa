#include "expressions/type.h"

#include <array>

namespace expressions {

void SimpleType::write(TextForm& form) const {
    static constexpr std::array words = {"char", "short", "int", "long", "long long"};
    if (isUnsigned) form << "unsigned ";
    if (const auto number = static_cast<std::size_t>(kind); number < words.size()) form << words[number];
}

void UserType::write(TextForm& form) const {
    form << name;
}

void StructType::write(TextForm& form) const {
    for (const StructField& field : fields) {
        form << *field.type << " " << field.name;
        if (field.bitWidth != 0) form << ":" << QString::number(field.bitWidth);
        form << ";";
    }
}

void RegisterType::write(TextForm& form) const {
    form << QString::number(size);
    for (const RegisterField& field : fields)
        form << " " << field.name << " " << QString::number(field.bitOffset) << " "
             << QString::number(field.bitSize);
}

void ArrayType::write(TextForm& form) const {
    form << *elementType << "[" << *size << "]";
}

void PointerType::write(TextForm& form) const {
    form << *pointedType << "*";
}

}  // namespace expressions
