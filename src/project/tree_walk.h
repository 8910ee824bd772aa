#pragma once

#include "project/project_element.h"

#include <type_traits>

namespace project {

/// Visits `top` and everything below it, a node before its children, in tree order and without recursion.
/// `visit(node)` may answer false to pass over what is below the node, and may change what is below it.
template <typename Visit>
void forEachElement(ProjectElement& top, Visit visit) {
    const auto enters = [&](ProjectElement& node) {
        if constexpr (std::is_same_v<decltype(visit(node)), bool>) {
            return visit(node);
        } else {
            visit(node);
            return true;
        }
    };
    ProjectElement* node = &top;
    while (node) {
        ProjectElement* next = enters(*node) ? node->firstChildElement() : nullptr;
        while (!next && node != &top) {
            next = node->nextSiblingElement();
            if (!next) node = node->parentElement();
        }
        node = next;
    }
}

/// Visits `top` and everything below it without recursion: `enter(node)` before what is below it,
/// `leave(node)` behind that.
template <typename Enter, typename Leave>
void walkElements(ProjectElement& top, Enter enter, Leave leave) {
    ProjectElement* node = &top;
    while (node) {
        enter(*node);
        ProjectElement* next = node->firstChildElement();
        while (!next && node) {
            leave(*node);
            if (node == &top) return;
            next = node->nextSiblingElement();
            if (!next) node = node->parentElement();
        }
        node = next;
    }
}

}  // namespace project
