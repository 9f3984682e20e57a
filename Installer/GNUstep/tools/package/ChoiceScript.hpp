#pragma once
#include <memory>
#include <string>
#include <string_view>

namespace vant::tools {

/// Answers the JavaScript expressions of a distribution ("true", "choices.base.selected &amp;&amp; check()"). They see
/// the distribution's own functions, the choices and `system.compareVersions`; an expression that asks for anything
/// else (the system's version, its files, its devices) has no answer here and throws ExpansionError.
class ChoiceScript {
public:
    ChoiceScript();
    ~ChoiceScript();
    ChoiceScript(const ChoiceScript &) = delete;
    ChoiceScript &operator=(const ChoiceScript &) = delete;

    /// Adds the functions that expressions may call.
    void define(const std::string &functions);
    /// Makes a choice known, or changes its state: `choices[identifier].selected`.
    void setSelected(const std::string &identifier, bool selected);
    /// The expression's value for that choice, which is `my.choice`.
    [[nodiscard]] bool value(const std::string &expression, const std::string &identifier);

private:
    struct State;

    std::unique_ptr<State> state_;
};

} // namespace vant::tools
