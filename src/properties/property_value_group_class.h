#pragma once

#include "properties/property_class.h"

namespace properties {

/// A choice among named groups of settings, defined by a `group` element whose `groupEntry` children are the
/// values.
class PropertyValueGroupClass : public PropertyClass {
public:
    /// `element` outlives the class and stays with its owner. `isLibraryGroup` tells a group of the libraries
    /// at hand from one of the file that was asked for.
    PropertyValueGroupClass(const xml::XMLElement& element, bool isLibraryGroup);

    const xml::XMLElement* element() const { return element_; }
    bool isLibraryGroup() const { return isLibraryGroup_; }

private:
    const xml::XMLElement* element_;
    bool isLibraryGroup_;
};

}  // namespace properties
