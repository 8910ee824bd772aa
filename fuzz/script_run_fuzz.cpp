// Runs any text under a budget of instructions and memory, twice, since a context outlives its scripts.
#include "script/context.h"

#include <cstddef>
#include <cstdint>

namespace {

class BudgetContext : public script::ESContext {
public:
    bool checkInterrupt() override {
        constexpr int budget = 20000;
        return ++asked_ < budget;
    }

private:
    int asked_ = 0;
};

}  // namespace

// The library's collator for localeAwareCompare stays until the process ends.
extern "C" const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() {
    return "leak:QCollator";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString source =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    BudgetContext context;
    script::initContext(context);
    constexpr std::size_t memory = std::size_t{64} << 20;
    context.arena().setLimit(memory);
    // The one way out of a context: no file of the machine is run.
    script::deleteProperty(*context.global, script::internAtom(u"load"));
    for (int run = 0; run < 2; ++run) {
        try {
            const script::ESResult result = context.evaluate(QString(), source);
            context.describe(result.value);
        } catch (const script::ESFatalError&) {  // NOLINT(bugprone-empty-catch): a good answer
        }
        if (context.scope() != nullptr || context.thisObject() != context.global) __builtin_trap();
    }
    return 0;
}
