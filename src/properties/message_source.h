#pragma once

#include <QString>

namespace properties {

/// The text catalogue of a host, from which classes of its own options take their texts.
class MessageSource {
public:
    virtual ~MessageSource() = default;
    /// The text of a key such as "fontSize.page", empty when there is none.
    virtual QString text(const QString& key) const = 0;
};

/// The catalogue of the process, or null; not owned.
inline MessageSource* messageSource = nullptr;

}  // namespace properties
