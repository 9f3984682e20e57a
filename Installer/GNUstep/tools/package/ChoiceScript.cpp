#include "GNUstep/tools/package/ChoiceScript.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <duktape.h>

#include <new>

namespace vant::tools {

namespace {

/// What expressions see. Versions are compared number by number, as the platform does.
constexpr std::string_view world = R"js(
var choices = {};
var my = { choice: null, result: {}, target: { mountpoint: "/" } };
var system = {
    log: function () {},
    compareVersions: function (left, right) {
        var a = String(left).split("."), b = String(right).split(".");
        for (var i = 0; i < Math.max(a.length, b.length); i++) {
            var difference = (parseInt(a[i], 10) || 0) - (parseInt(b[i], 10) || 0);
            if (difference !== 0)
                return difference < 0 ? -1 : 1;
        }
        return 0;
    }
};
)js";

} // namespace

struct ChoiceScript::State {
    State() : context(duk_create_heap_default()) {
        if (context == nullptr)
            throw std::bad_alloc();
    }
    State(const State &) = delete;
    State &operator=(const State &) = delete;
    ~State() { duk_destroy_heap(context); }

    /// Leaves the result on the stack.
    void evaluate(std::string_view source) {
        if (duk_peval_lstring(context, source.data(), source.size()) == 0)
            return;
        const std::string reason = duk_safe_to_string(context, -1);
        duk_pop(context);
        throw ExpansionError("The package asks what cannot be answered here (" + reason + ").");
    }

    void run(std::string_view source) {
        evaluate(source);
        duk_pop(context);
    }

    duk_context *context;
};

ChoiceScript::ChoiceScript() : state_(std::make_unique<State>()) {
    state_->run(world);
}

ChoiceScript::~ChoiceScript() = default;

void ChoiceScript::define(const std::string &functions) {
    state_->run(functions);
}

void ChoiceScript::setSelected(const std::string &identifier, bool selected) {
    auto *context = state_->context;
    duk_get_global_string(context, "choices");
    duk_push_object(context);
    duk_push_boolean(context, selected ? 1 : 0);
    duk_put_prop_string(context, -2, "selected");
    duk_put_prop_lstring(context, -2, identifier.data(), identifier.size());
    duk_pop(context);
}

bool ChoiceScript::value(const std::string &expression, const std::string &identifier) {
    auto *context = state_->context;
    duk_get_global_string(context, "my");
    duk_get_global_string(context, "choices");
    duk_get_prop_lstring(context, -1, identifier.data(), identifier.size());
    duk_remove(context, -2);
    duk_put_prop_string(context, -2, "choice");
    duk_pop(context);
    state_->evaluate(expression);
    const bool value = duk_to_boolean(context, -1) != 0;
    duk_pop(context);
    return value;
}

} // namespace vant::tools
