#pragma once

#include "script/forth/forth_engine.h"

#include <QString>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// A Forth engine with the words of `atelis forth`, and what these print.
class ForthHost {
public:
    ForthHost();
    ForthHost(const ForthHost&) = delete;
    ForthHost& operator=(const ForthHost&) = delete;
    ~ForthHost();

    /// Runs one line; answers the error text, which is empty on success. No effect behind `BYE`.
    QString run(std::string_view line);

    /// What the words have printed since the last call.
    std::string takeOutput();
    bool isCompiling() const { return engine_.compiling != 0; }
    /// True once `BYE` has run.
    bool isFinished() const { return isFinished_; }

private:
    struct Words;  ///< the bodies of the primitives

    /// Throws code -3 when there is none.
    script::ForthValue pop();
    void push(const script::ForthValue& value);

    script::ForthEngine engine_;
    script::WordList words_;
    std::vector<std::unique_ptr<script::pcode>> owned_;  ///< primitives and definitions, replaced ones too
    std::string output_;
    bool isFinished_ = false;
};

}  // namespace cli
