#pragma once

#include "script/native_class.h"

#include <QStringList>

namespace script {

/// The global object and the functions that stand in it.
class ESNativeGlobal : public ESNativeClass {
public:
    ESNativeGlobal();

    /// Fills the context's global object.
    void install(ESContext& context);
    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;

    /// Adds a directory that `load` searches for a name that does not open as it stands.
    void addLoadDirectory(const QString& path) { loadDirectories_.append(path); }

private:
    ESValue eval(ESContext& context, const ESValue& source);
    ESValue load(ESContext& context, const QString& name);

    QStringList loadDirectories_;
};

}  // namespace script
