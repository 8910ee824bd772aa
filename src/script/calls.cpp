// Frames: how functions, natives and constructors are entered and left.
#include "script/atom.h"
#include "script/context.h"
#include "script/native_function.h"
#include "script/native_object.h"
#include "script/native_stack.h"
#include "script/native_string.h"

#include <algorithm>

namespace script {

void ESContext::stackOverflow() {
    throw ESFatalError{QStringLiteral("virtual machine stack too small")};
}

void ESContext::checkNativeStack() {
    if (!hasNativeStack()) stackOverflow();
}

ESContext::Frame& ESContext::pushFrame() {
    if (frame_ + 1 == framesEnd_) stackOverflow();
    return *++frame_ = Frame();
}

/// Marks the chain as held by a function or value, so that its activations outlive their calls.
void ESContext::capture(ScopeLink* scope) {
    for (; scope != nullptr && !scope->isCaptured; scope = scope->next) scope->isCaptured = true;
}

/// Enters a script function with the top `argc` entries.
void ESContext::enter(ESObject* function, ESObject* thisObject, std::uint32_t argc) {
    const ESClosure& closure = *function->closure;
    const ESCode& code = *closure.code;
    if (stackEnd_ - sp_ <= std::ptrdiff_t{closure.arity} + code.localCount + code.stackDepth) stackOverflow();
    ESValue* args = sp_ - argc + 1;
    for (; argc < closure.arity; ++argc) *++sp_ = ESValue();
    Frame& frame = pushFrame();
    frame.code = &code;
    frame.pc = code.bytes.data();
    frame.args = args;
    frame.argCount = argc;
    frame.scope = closure.scope;
    frame.thisObject = thisObject;
    if (code.needsActivation)
        enterActivation(frame);
    else
        for (std::uint32_t local = 0; local < code.localCount; ++local) *++sp_ = ESValue();
}

void ESContext::enterActivation(Frame& frame) {
    const ESCode& code = *frame.code;
    ESObject* activation = newObject(nullptr, activationClass.get());
    PropertyVector& slots = activation->properties;
    slots.reserve(arena_, frame.argCount + code.localCount);
    for (std::uint32_t i = 0; i < frame.argCount; ++i) {
        const bool isDeclared = i < code.parameterCount;
        slots.append(arena_, isDeclared ? code.variables[i].name : nullptr,
                     isDeclared ? code.variables[i].attributes : NoAttributes, frame.args[i]);
    }
    for (std::size_t i = code.parameterCount; i < code.variables.size(); ++i)
        slots.append(arena_, code.variables[i].name, code.variables[i].attributes, ESValue());
    auto* link = static_cast<ScopeLink*>(arena_.allocate(sizeof(ScopeLink)));
    *link = {frame.scope, activation, false};
    frame.scope = frame.activation = link;
}

/// Leaves the running frame; `acc` takes the place of its arguments.
void ESContext::leave() {
    ESValue result = *sp_;
    const Frame& frame = *frame_--;
    if (frame.constructed != nullptr && !result.isObject()) result = ESValue(frame.constructed);
    sp_ = frame.args;
    *sp_ = result;
    if (frame.activation == nullptr || frame.activation->isCaptured) return;
    frame.activation->object->properties.clear(arena_);
    releaseCell(frame.activation->object);
    arena_.release(frame.activation, sizeof(ScopeLink));
}

void ESContext::unwindTo(const Frame* bottom) {
    while (frame_ >= bottom) leave();
}

void ESContext::callBuiltin(ESObject* function, ESObject* thisObject, std::uint32_t argc) {
    checkNativeStack();
    if (stackEnd_ - sp_ <= std::ptrdiff_t{function->closure->arity} + 1) stackOverflow();
    ESValue* args = sp_ - argc + 1;
    for (; argc < function->closure->arity; ++argc) *++sp_ = ESValue();
    // Without arguments the result still needs an entry of its own.
    if (argc == 0) *++sp_ = ESValue();
    function->cls->call(*this, function, thisObject, argc, args);
    sp_ = args;
}

void ESContext::call(ESObject* function, ESObject* thisObject, std::uint32_t argc) {
    if (function->closure == nullptr) throwTypeError(QStringLiteral("can only call function objects"));
    if (function->closure->code == nullptr) return callBuiltin(function, thisObject, argc);
    enter(function, thisObject, argc);
    execute();
}

ESValue ESContext::callFunction(ESObject* function, ESObject* thisObject, std::uint32_t argc,
                                const ESValue* argv) {
    if (stackEnd_ - sp_ <= std::ptrdiff_t{argc}) stackOverflow();
    ESValue* const top = sp_;
    for (std::uint32_t i = 0; i < argc; ++i) *++sp_ = argv[i];
    call(function, thisObject, argc);
    const ESValue result = *sp_;
    sp_ = top;
    return result;
}

/// Calls a value with the top `argc` entries: a native at once, a script function by its frame.
void ESContext::beginCall(const ESValue& callee, ESObject* thisObject, std::uint32_t argc) {
    if (!callee.isObject() || callee.asObject()->closure == nullptr)
        throwTypeError(QStringLiteral("not a function object"));
    ESObject* function = callee.asObject();
    if (function->closure->code != nullptr)
        enter(function, thisObject, argc);
    else
        callBuiltin(function, thisObject, argc);
}

void ESContext::beginMethodCall(const ESValue& target, const ESAtom* name, std::uint32_t argc) {
    ESObject* object = toObject(target);
    const ESValue method = get(object, name);
    beginCall(method, object, argc);
    // The library's own text methods keep nothing of the object that stands for the text.
    const bool isOwnMethod = target.isString() && method.asObject()->cls == stringClass.get() &&
                             method.asObject()->closure->code == nullptr;
    if (isOwnMethod) releaseCell(object);
}

void ESContext::beginConstruct(const ESValue& callee, std::uint32_t argc) {
    if (!callee.isObject() || callee.asObject()->constructor == nullptr)
        throwTypeError(QStringLiteral("new must be given a constructor object"));
    ESObject* function = callee.asObject();
    if (function->closure == nullptr || function->closure->code == nullptr) {
        ESValue* args = sp_ - argc + 1;
        const ESValue result(construct(function, argc, args));
        sp_ = args;
        *sp_ = result;
        return;
    }
    ESObject* object = newObject(prototypeFor(function), objectClass.get());
    enter(function, object, argc);
    frame_->constructed = object;
}

ESObject* ESContext::prototypeFor(ESObject* function) {
    const ESValue prototype = get(function, knownAtoms().prototype);
    return prototype.isObject() ? prototype.asObject() : objectPrototype;
}

ESObject* ESContext::construct(ESObject* function, std::uint32_t argc, const ESValue* argv) {
    const auto fail = [&] {
        throwGeneralError(
            QStringLiteral("%1 failed to generate an object").arg(toStringValue(function->value)));
    };
    if (function->cls != nullptr && function->builtinId != ESObject::noBuiltin) {
        checkNativeStack();
        // Natives may write to their arguments.
        std::vector<ESValue> arguments(argv, argv + argc);
        ESObject* object = function->cls->construct(*this, function, argc, arguments.data());
        if (object == nullptr) fail();
        return object;
    }
    if (function->closure == nullptr) fail();
    ESObject* object = newObject(prototypeFor(function), objectClass.get());
    const ESValue result = callFunction(function, object, argc, argv);
    return result.isObject() ? result.asObject() : object;
}

void ESContext::run(const ESCode& code) {
    if (stackEnd_ - sp_ <= std::ptrdiff_t{code.stackDepth} + 1) stackOverflow();
    const Frame& around = *frame_;
    Frame& frame = pushFrame();
    frame.code = &code;
    frame.pc = code.bytes.data();
    frame.args = sp_ + 1;
    frame.scope = around.scope;
    frame.thisObject = around.thisObject;
    execute();
}

void ESContext::execute() {
    checkNativeStack();
    const Frame* const bottom = frame_;
    if (!asksHost_)
        interpret<false>(bottom);
    else if (checkInterrupt())
        interpret<true>(bottom);
    else
        unwindTo(bottom);
}

ESObject* ESContext::lookupName(const ESAtom* name, ESValue& result) {
    for (const ScopeLink* link = frame_->scope; link != nullptr; link = link->next) {
        if (link->object->find(name) == nullptr) continue;
        result = get(link->object, name);
        return link->object;
    }
    result = get(global, name);
    return global;
}

void ESContext::assignName(const ESAtom* name, const ESValue& value) {
    for (const ScopeLink* link = frame_->scope; link != nullptr; link = link->next)
        if (link->object->find(name) != nullptr) return put(link->object, name, value);
    put(global, name, value);
}

bool ESContext::deleteByName(const ESAtom* name) {
    for (const ScopeLink* link = frame_->scope; link != nullptr; link = link->next)
        if (hasOwnProperty(*link->object, name)) return deleteProperty(*link->object, name);
    return false;
}

/// Adds `step` to the variable `name`; answers its new number.
double ESContext::stepName(const ESAtom* name, double step) {
    ESValue value;
    lookupName(name, value);
    const double number = toNumber(value) + step;
    assignName(name, ESValue(number));
    return number;
}

}  // namespace script
