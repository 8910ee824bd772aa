// The loop of the stack machine. `sp` points at the entry that holds the top of the stack; a push advances
// it. The registers live in local variables and are written back (SAVE) before anything that may call, throw
// or look at the stack, and read again (LOAD) when the running frame may have changed.
#include "script/atom.h"
#include "script/context.h"
#include "script/native_array.h"
#include "script/native_object.h"
#include "script/opcodes.h"
#include "script/operators.h"

#include <cmath>
#include <cstdio>

namespace script {

namespace {

bool areNumbers(const ESValue& left, const ESValue& right) {
    return left.isNumber() && right.isNumber();
}

/// The element of a dense array under a number, or null when the way by the name is due.
ESValue* denseElement(const ESValue& object, const ESValue& key) {
    if (!object.isObject() || !key.isNumber()) return nullptr;
    const double number = key.asNumber();
    if (!(number >= 0 && number < ESAtom::noArrayIndex)) return nullptr;
    const auto i = static_cast<std::uint32_t>(number);
    return i == number ? object.asObject()->elements.find(i) : nullptr;
}

/// fmod, which takes many times longer than a division of integers.
double remainder(double left, double right) {
    const bool areIndexes = left >= 0 && right >= 1 && left <= UINT32_MAX && right <= UINT32_MAX;
    if (areIndexes) {
        const auto first = static_cast<std::uint32_t>(left);
        const auto second = static_cast<std::uint32_t>(right);
        if (first == left && second == right && !std::signbit(left)) return first % second;
    }
    return std::fmod(left, right);
}

ESValue constantOf(Op op) {
    switch (op) {
        case Op::Null:
            return ESValue::null();
        case Op::True:
            return ESValue::boolean(true);
        case Op::False:
            return ESValue::boolean(false);
        case Op::Gap:
            return ESValue::noElement();
        default:
            return {};
    }
}

bool isIncrement(Op op) {
    return op == Op::PreIncX || op == Op::PostIncX || op == Op::PreIncP || op == Op::PostIncP;
}

bool isPostfix(Op op) {
    return op == Op::PostIncX || op == Op::PostDecX || op == Op::PostIncP || op == Op::PostDecP;
}

}  // namespace

void ESContext::throwUnknownOpcode() {
    const auto offset = static_cast<std::size_t>(frame_->pc - frame_->code->bytes.data() - 1);
    std::printf("%s\n", listInstruction(*frame_->code, offset).toUtf8().constData());
    throwTypeError(QStringLiteral("??"));
}

/// Object and key on top: steps the property, answers what the expression is worth.
ESValue ESContext::stepProperty(Op op, const ESValue& target, const ESValue& key) {
    ESObject* object = toObject(target);
    const double old = toNumber(getComputed(object, key));
    const double stepped = isIncrement(op) ? old + 1 : old - 1;
    putComputed(object, key, ESValue(stepped));
    return {isPostfix(op) ? old : stepped};
}

ESValue ESContext::combineProperty(Op op, const ESValue& target, const ESValue& key, const ESValue& right) {
    ESObject* object = toObject(target);
    const auto plain = static_cast<Op>(static_cast<int>(op) - 1);
    const ESValue result = applyBinary(*this, plain, getComputed(object, key), right);
    putComputed(object, key, result);
    return result;
}

ESValue ESContext::makeArray(std::uint32_t count, const ESValue* values) {
    ESObject* array = newArray(0, nullptr);
    array->elements.reserve(arena_, count);
    for (std::uint32_t i = 0; i < count; ++i)
        if (!values[i].isNoElement()) array->elements.put(arena_, i, values[i]);
    array->properties[0].value = ESValue(static_cast<double>(count));
    return {array};
}

void ESContext::pushScope(ESObject* object) {
    auto* link = static_cast<ScopeLink*>(arena_.allocate(sizeof(ScopeLink)));
    *link = {frame_->scope, object, false};
    frame_->scope = link;
}

#define SAVE() (sp_ = sp, frame_->pc = pc)
#define LOAD() \
    (sp = sp_, pc = frame_->pc, code = frame_->code, args = frame_->args, locals = args + frame_->argCount)
#define OPERAND() (pc += 2, readOperand(pc - 2))
#define GLOBAL(i) (global->properties[i].value)
#define ACTIVATION(i) (frame_->scope->object->properties[i].value)
#define JUMP_IF(condition)                                \
    do {                                                  \
        const std::uint32_t target_ = OPERAND();          \
        if (condition) pc = code->bytes.data() + target_; \
    } while (false)

#define ARITHMETIC(name, expression)                    \
    case Op::name:                                      \
        if (areNumbers(sp[-1], *sp)) {                  \
            const double left = sp[-1].asNumber();      \
            const double right = sp->asNumber();        \
            *--sp = ESValue(expression);                \
            break;                                      \
        }                                               \
        SAVE();                                         \
        --sp;                                           \
        *sp = applyBinary(*this, Op::name, *sp, sp[1]); \
        break;

#define ACCESS(get, put, call, slot)          \
    case Op::get: {                           \
        const std::uint32_t i = OPERAND();    \
        *++sp = slot;                         \
        break;                                \
    }                                         \
    case Op::put: {                           \
        const std::uint32_t i = OPERAND();    \
        (slot) = *sp--;                       \
        break;                                \
    }                                         \
    case Op::call: {                          \
        const std::uint32_t i = OPERAND();    \
        const std::uint32_t argc = OPERAND(); \
        const ESValue callee = slot;          \
        SAVE();                               \
        beginCall(callee, global, argc);      \
        LOAD();                               \
        break;                                \
    }

#define STEP(name, slot, change)                  \
    case Op::name: {                              \
        const std::uint32_t i = OPERAND();        \
        if (!(slot).isNumber()) {                 \
            SAVE();                               \
            const double number = toNumber(slot); \
            (slot) = ESValue(number);             \
        }                                         \
        (slot).numberRef() += (change);           \
        break;                                    \
    }

template <bool asksHost>
void ESContext::interpret(const Frame* bottom) {
    const std::uint8_t* pc;
    const ESCode* code;
    ESValue* sp;
    ESValue* args;
    ESValue* locals;
    LOAD();
    for (;;) {
        const Op op = static_cast<Op>(*pc++);
        switch (op) {
            case Op::Num:
                *++sp = ESValue(code->numbers[OPERAND()]);
                break;
            case Op::Num0:
            case Op::Num1:
            case Op::Num2:
            case Op::Num3:
            case Op::Num4:
                *++sp = ESValue(static_cast<double>(static_cast<int>(op) - static_cast<int>(Op::Num0)));
                break;
            case Op::NumM1:
                *++sp = ESValue(-1.0);
                break;
            case Op::Null:
            case Op::True:
            case Op::False:
            case Op::Undefined:
            case Op::Gap:
                *++sp = constantOf(op);
                break;
            case Op::This:
                *++sp = ESValue::objectOrNull(frame_->thisObject);
                break;
            case Op::Str:
                *++sp = ESValue(code->atoms[OPERAND()]);
                break;
            case Op::New: {
                SAVE();
                const ESValue callee = *sp_--;
                beginConstruct(callee, 0);
                LOAD();
                break;
            }
            case Op::NewA: {
                const std::uint32_t argc = OPERAND();
                SAVE();
                const ESValue callee = *sp_--;
                beginConstruct(callee, argc);
                LOAD();
                break;
            }
            case Op::Drop:
                --sp;
                break;
            case Op::Dup:
                sp[1] = *sp;
                ++sp;
                break;
            case Op::Void:
                *sp = ESValue();
                break;
            case Op::TypeOf:
                *sp = ESValue(typeName(*sp));
                break;
            case Op::Enum:
                SAVE();
                *sp = ESValue(enumerate(toObject(*sp)));
                break;
            case Op::Next: {
                SAVE();
                if (!sp->isObject()) throw ESFatalError{QStringLiteral("tos isn't a property object")};
                ESValue name;
                const bool hasName = next(sp->asObject(), name);
                if (hasName)
                    *sp = name;
                else
                    --sp;
                JUMP_IF(hasName);
                break;
            }
            case Op::Closure: {
                const std::uint32_t k = OPERAND();
                SAVE();
                *++sp = ESValue(newClosure(*templates_[code->functions[k]]));
                break;
            }
            case Op::MkArray: {
                const std::uint32_t count = OPERAND();
                SAVE();
                sp -= count;
                const ESValue array = makeArray(count, sp + 1);
                *++sp = array;
                break;
            }
            case Op::NewObj:
                SAVE();
                *++sp = ESValue(newObject(objectPrototype, objectClass.get()));
                break;
            case Op::With:
                SAVE();
                pushScope(toObject(*sp));
                --sp;
                break;
            case Op::EndWith:
                frame_->scope = frame_->scope->next;
                break;
            case Op::InitF: {
                const ESAtom* name = code->atoms[OPERAND()];
                SAVE();
                put(sp[-1].asObject(), name, *sp);
                --sp;
                break;
            }
            case Op::CallW: {
                const ESAtom* name = code->atoms[OPERAND()];
                const std::uint32_t argc = OPERAND();
                SAVE();
                ESValue callee;
                ESObject* holder = lookupName(name, callee);
                // The callee may keep the object that it is called on.
                if (holder != global) capture(frame_->scope);
                beginCall(callee, holder, argc);
                LOAD();
                break;
            }
            case Op::CallF: {
                const ESAtom* name = code->atoms[OPERAND()];
                const std::uint32_t argc = OPERAND();
                SAVE();
                const ESValue target = *sp_--;
                beginMethodCall(target, name, argc);
                LOAD();
                break;
            }
            case Op::CallX: {
                const std::uint32_t argc = OPERAND();
                SAVE();
                const ESAtom* name = toAtom(*sp);
                const ESValue target = sp[-1];
                sp_ = sp - 2;
                beginMethodCall(target, name, argc);
                LOAD();
                break;
            }
            case Op::CallV: {
                const std::uint32_t argc = OPERAND();
                SAVE();
                const ESValue callee = *sp_--;
                beginCall(callee, global, argc);
                LOAD();
                break;
            }
            case Op::GetW: {
                const ESAtom* name = code->atoms[OPERAND()];
                SAVE();
                ++sp;
                lookupName(name, *sp);
                break;
            }
            case Op::PutW: {
                const ESAtom* name = code->atoms[OPERAND()];
                SAVE();
                assignName(name, *sp);
                --sp;
                break;
            }
                ACCESS(GetG, PutG, CallG, GLOBAL(i))
                ACCESS(GetA, PutA, CallA, args[i])
                ACCESS(GetL, PutL, CallL, locals[i])
                ACCESS(GetAM, PutAM, CallAM, ACTIVATION(i))
                ACCESS(GetLM, PutLM, CallLM, ACTIVATION(i + frame_->argCount))
            case Op::GetF: {
                const ESAtom* name = code->atoms[OPERAND()];
                SAVE();
                *sp = getMember(*sp, name);
                break;
            }
            case Op::PutF: {
                const ESAtom* name = code->atoms[OPERAND()];
                SAVE();
                ESObject* object = toObject(*sp);
                object->cls->put(*this, object, name, sp[-1]);
                sp -= 2;
                break;
            }
            case Op::GetX:
                if (const ESValue* element = denseElement(sp[-1], *sp)) {
                    *--sp = *element;
                    break;
                }
                SAVE();
                sp[-1] = getComputedMember(sp[-1], *sp);
                --sp;
                break;
            case Op::PutX:
                if (ESValue* element = denseElement(sp[-1], *sp);
                    element != nullptr && !sp[-1].asObject()->hasElementsBehindLength) {
                    *element = sp[-2];
                } else {
                    SAVE();
                    ESObject* object = toObject(sp[-1]);
                    putComputed(object, *sp, sp[-2]);
                }
                sp -= 3;
                break;
                ARITHMETIC(Add, left + right)
                ARITHMETIC(Sub, left - right)
                ARITHMETIC(Mul, left * right)
                ARITHMETIC(Div, left / right)
                ARITHMETIC(Mod, remainder(left, right))
            case Op::BitAnd:
            case Op::BitOr:
            case Op::BitXor:
            case Op::Shl:
            case Op::Shr:
            case Op::UShr:
                SAVE();
                --sp;
                *sp = applyBinary(*this, op, *sp, sp[1]);
                break;
            case Op::AddX:
            case Op::SubX:
            case Op::MulX:
            case Op::DivX:
            case Op::ModX:
            case Op::BitAndX:
            case Op::BitOrX:
            case Op::BitXorX:
            case Op::ShlX:
            case Op::ShrX:
            case Op::UShrX:
                SAVE();
                sp[-2] = combineProperty(op, sp[-1], *sp, sp[-2]);
                sp -= 2;
                break;
                STEP(IncG, GLOBAL(i), 1)
                STEP(IncA, args[i], 1)
                STEP(IncL, locals[i], 1)
                STEP(IncM, ACTIVATION(i), 1)
                STEP(IncLM, ACTIVATION(i + frame_->argCount), 1)
                STEP(DecG, GLOBAL(i), -1)
                STEP(DecA, args[i], -1)
                STEP(DecL, locals[i], -1)
                STEP(DecAM, ACTIVATION(i), -1)
                STEP(DecLM, ACTIVATION(i + frame_->argCount), -1)
            case Op::PreIncX:
            case Op::PostIncX:
            case Op::PreDecX:
            case Op::PostDecX: {
                SAVE();
                const double step = isIncrement(op) ? 1 : -1;
                const double stepped = stepName(toAtom(*sp), step);
                *sp = ESValue(isPostfix(op) ? stepped - step : stepped);
                break;
            }
            case Op::PreIncP:
            case Op::PostIncP:
            case Op::PreDecP:
            case Op::PostDecP:
                SAVE();
                sp[-1] = stepProperty(op, sp[-1], *sp);
                --sp;
                break;
            case Op::DeleteW: {
                const ESAtom* name = code->atoms[OPERAND()];
                *++sp = ESValue::boolean(deleteByName(name));
                break;
            }
            case Op::DeleteX: {
                SAVE();
                const ESAtom* name = toAtom(*sp);
                ESObject* object = toObject(sp[-1]);
                *--sp = ESValue::boolean(deleteProperty(*object, name));
                break;
            }
            case Op::Lt:
                if (areNumbers(sp[-1], *sp) && !std::isunordered(sp[-1].asNumber(), sp->asNumber())) {
                    const bool isLess = sp[-1].asNumber() < sp->asNumber();
                    *--sp = ESValue::boolean(isLess);
                } else {
                    SAVE();
                    const Order order = lessThan(*this, sp[-1], *sp);
                    *--sp = order == Order::Unordered ? ESValue() : ESValue::boolean(order == Order::True);
                }
                break;
            case Op::Le: {
                SAVE();
                const bool holds = areNumbers(sp[-1], *sp) ? sp[-1].asNumber() <= sp->asNumber()
                                                           : lessOrEqual(*this, sp[-1], *sp);
                *--sp = ESValue::boolean(holds);
                break;
            }
            case Op::Eq:
            case Op::Ne: {
                SAVE();
                const bool areEqual = areNumbers(sp[-1], *sp) ? sp[-1].asNumber() == sp->asNumber()
                                                              : looselyEqual(*this, sp[-1], *sp);
                *--sp = ESValue::boolean(areEqual == (op == Op::Eq));
                break;
            }
            case Op::Identity:
            case Op::NotIdentity: {
                SAVE();
                const bool areEqual = strictEquals(sp[-1], *sp);
                *--sp = ESValue::boolean(areEqual == (op == Op::Identity));
                break;
            }
            case Op::LogNot:
                *sp = ESValue::boolean(!toBoolean(*sp));
                break;
            case Op::BitNot:
                SAVE();
                *sp = ESValue(static_cast<double>(~toInt32(*sp)));
                break;
            case Op::Pos:
            case Op::Neg: {
                SAVE();
                const double number = sp->isNumber() ? sp->asNumber() : toNumber(*sp);
                *sp = ESValue(op == Op::Pos ? number : -number);
                break;
            }
            case Op::LogAnd:
            case Op::LogOr: {
                const bool stays = toBoolean(*sp) == (op == Op::LogOr);
                JUMP_IF(stays);
                if (!stays) --sp;
                break;
            }
            case Op::J:
                JUMP_IF(true);
                break;
            case Op::Jt:
            case Op::Jf: {
                const bool isTrue = sp->isBoolean() ? sp->asNumber() != 0 : toBoolean(*sp);
                --sp;
                JUMP_IF(isTrue == (op == Op::Jt));
                break;
            }
            case Op::JtDrop: {
                const bool isTrue = toBoolean(*sp);
                sp -= isTrue ? 2 : 1;
                JUMP_IF(isTrue);
                break;
            }
            case Op::Jlt: {
                bool isLess;
                if (areNumbers(sp[-1], *sp)) {
                    isLess = sp[-1].asNumber() < sp->asNumber();
                } else {
                    SAVE();
                    isLess = lessThan(*this, sp[-1], *sp) == Order::True;
                }
                sp -= 2;
                JUMP_IF(isLess);
                break;
            }
            case Op::RetU:
                *++sp = ESValue();
                [[fallthrough]];
            case Op::Ret: {
                const bool isLast = frame_ == bottom;
                SAVE();
                leave();
                if (isLast) return;
                LOAD();
                break;
            }
            default:
                SAVE();
                throwUnknownOpcode();
        }
        if constexpr (asksHost) {
            SAVE();
            if (!checkInterrupt()) return unwindTo(bottom);
        }
    }
}

#undef SAVE
#undef LOAD
#undef OPERAND
#undef GLOBAL
#undef ACTIVATION
#undef JUMP_IF
#undef ARITHMETIC
#undef ACCESS
#undef STEP

template void ESContext::interpret<false>(const Frame* bottom);
template void ESContext::interpret<true>(const Frame* bottom);

}  // namespace script
