#include "manifest/binding_env.h"

#include "manifest/eval_string.h"

#include <memory_resource>

namespace manifest {

std::string_view BindingEnv::lookupVariable(std::string_view name) {
    for (const BindingEnv* scope = this; scope != nullptr; scope = scope->parent_)
        if (const PooledString* value = scope->bindings_.find(name)) return value->view();
    return {};
}

void BindingEnv::addRule(PooledString name, const Rule* rule) {
    if (!rules_) rules_ = std::make_unique<NameTable<const Rule*>>(std::pmr::get_default_resource());
    rules_->set(name, rule);
}

const Rule* BindingEnv::lookupRuleCurrentScope(std::string_view name) const {
    const Rule* const* rule = rules_ ? rules_->find(name) : nullptr;
    return rule != nullptr ? *rule : nullptr;
}

const Rule* BindingEnv::lookupRule(std::string_view name) const {
    for (const BindingEnv* scope = this; scope != nullptr; scope = scope->parent_)
        if (const Rule* rule = scope->lookupRuleCurrentScope(name)) return rule;
    return nullptr;
}

std::string_view BindingEnv::lookupWithFallback(std::string_view name, const EvalString* eval, Env& env,
                                                std::string* buffer) {
    if (const PooledString* value = bindings_.find(name)) return value->view();
    if (eval != nullptr) return eval->evaluate(env, buffer);
    return parent_ != nullptr ? parent_->lookupVariable(name) : std::string_view();
}

}  // namespace manifest
