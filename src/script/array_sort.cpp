#include "script/array_methods.h"
#include "script/context.h"

namespace script {

namespace {

/// The order of two elements: undefined behind everything, then by the function or the texts.
class ElementOrder {
public:
    ElementOrder(ESContext& context, ESObject* list, ESObject* compare)
        : context_(context), list_(list), compare_(compare) {}

    bool isGreater(ESValue lifted, ESValue other) {
        if (lifted.isUndefined() || other.isUndefined()) return lifted.isUndefined() && !other.isUndefined();
        if (compare_ != nullptr) {
            context_.pushArgument(lifted);
            context_.pushArgument(other);
            const ESValue& answer = context_.callPushed(compare_, list_, 2);
            return (answer.isNumber() ? answer.asNumber() : context_.toNumber(ESValue(answer))) > 0;
        }
        return isTextGreater(lifted, other);
    }

private:
    bool isTextGreater(ESValue lifted, ESValue other) {
        if (lifted.isString() && other.isString())
            return compareTexts(context_.arena(), lifted.asText(), other.asText()) > 0;
        return liftedText(lifted) > context_.toStringValue(other);
    }

    /// An element that is lifted is compared many times, so the text of a number is kept.
    QString liftedText(const ESValue& lifted) {
        if (!lifted.isNumber()) return context_.toStringValue(lifted);
        if (numberText_.isEmpty() || lifted.asNumber() != number_) {
            number_ = lifted.asNumber();
            numberText_ = context_.toStringValue(lifted);
        }
        return numberText_;
    }

    ESContext& context_;
    ESObject* list_;
    ESObject* compare_;
    double number_ = 0;
    QString numberText_;
};

}  // namespace

void sortArray(ESContext& context, ESObject* list, std::uint32_t length, ESObject* compare) {
    LoopWatch watch(context);
    ElementOrder order(context, list, compare);
    for (std::uint32_t gap = (length + 3) / 5; gap > 0; gap = (gap + 1) / 3) {
        for (std::uint32_t i = length - 1; i >= gap; --i) {
            const ESValue lifted = context.getElement(list, i - gap);
            std::uint32_t place = i;
            while (place < length) {
                if (watch.isOver()) return;
                const ESValue other = context.getElement(list, place);
                if (!order.isGreater(lifted, other)) break;
                putOrDelete(context, list, place - gap, other);
                place += gap;
            }
            putOrDelete(context, list, place - gap, lifted);
        }
    }
}

}  // namespace script
