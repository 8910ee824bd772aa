#include "manifest/edge.h"

#include "manifest/edge_env.h"

namespace manifest {

namespace {

std::size_t unsignedCount(std::int32_t count) {
    return static_cast<std::size_t>(count);
}

}  // namespace

std::span<Node* const> Edge::explicitInputs() const {
    return std::span(inputs_).first(inputs_.size() - unsignedCount(implicitInputCount_) -
                                    unsignedCount(orderOnlyInputCount_));
}

std::span<Node* const> Edge::implicitInputs() const {
    return std::span(inputs_).subspan(explicitInputs().size(), unsignedCount(implicitInputCount_));
}

std::span<Node* const> Edge::orderOnlyInputs() const {
    return std::span(inputs_).last(unsignedCount(orderOnlyInputCount_));
}

std::span<Node* const> Edge::explicitOutputs() const {
    return std::span(outputs_).first(outputs_.size() - unsignedCount(implicitOutputCount_));
}

std::span<Node* const> Edge::implicitOutputs() const {
    return std::span(outputs_).last(unsignedCount(implicitOutputCount_));
}

std::string Edge::binding(std::string_view name) const {
    EdgeEnv env(*this, EdgeEnv::EscapeMode::Shell);
    return std::string(env.lookupVariable(name));
}

void Edge::setInputCounts(std::int32_t implicitCount, std::int32_t orderOnlyCount) {
    implicitInputCount_ = implicitCount;
    orderOnlyInputCount_ = orderOnlyCount;
}

void Edge::reserve(std::size_t outputCount, std::size_t inputCount) {
    outputs_.reserve(outputCount);
    inputs_.reserve(inputCount);
}

}  // namespace manifest
