#include "script/forth/forth_pcode.h"

#include "script/forth/forth_engine.h"
#include "script/forth/forth_exception.h"

#include <utility>

namespace script {

ForthValue ForthValue::ofInteger(std::int64_t integer) {
    ForthValue value;
    value.integer = integer;
    return value;
}

ForthValue ForthValue::ofReal(double real) {
    ForthValue value;
    value.real = real;
    value.type = ForthReal;
    return value;
}

void pcode::execute(ForthEngine&) {
    throw ForthException(ForthNotSupported, name);
}

void* pcode::parameterField() {
    if (body == nullptr) throw ForthException(ForthAbort, name + QStringLiteral("does not have a PFA"));
    return body;
}

void* pcode::codeField() {
    throw ForthException(ForthAbort, QStringLiteral("no CFA"));
}

void pcode::store() {
    throw ForthException(ForthNoStore, name);
}

void PCall::execute(ForthEngine& engine) {
    runChain(engine, target);
}

void PLiteralChild::execute(ForthEngine& engine) {
    pushValue(engine.dataStack, value);
}

void ForthDefinition::execute(ForthEngine& engine) {
    runChain(engine, first);
}

void ForthDefinition::append(std::unique_ptr<pcode> node) {
    if (sealed) throw ForthException(ForthSealedDefinition, name);
    nodes_.push_back(std::move(node));
    if (last != nullptr)
        last->next = nodes_.back().get();
    else
        first = nodes_.back().get();
    last = nodes_.back().get();
}

}  // namespace script
