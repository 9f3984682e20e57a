#include "GNUstep/tools/package/Distribution.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/package/ChoiceScript.hpp"
#include "GNUstep/tools/package/Xml.hpp"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <set>

namespace vant::tools {

namespace {

std::string percentDecoded(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        const auto digits = text.substr(i + 1, 2);
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (text[i] == '%' && digits.size() == 2 && read.ptr == digits.data() + 2) {
            plain += static_cast<char>(byte);
            i += 2;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

std::string attributeOr(const XmlElement &element, std::string_view name, std::string_view otherwise) {
    const auto *value = element.attribute(name);
    return value == nullptr ? std::string(otherwise) : *value;
}

class Reader {
public:
    explicit Reader(const XmlElement &root) : root_(root) {
        for (const auto &child : root.children) {
            if (child.name == "choice")
                addChoice(child);
            else if (child.name == "pkg-ref")
                addReference(child);
            else if (child.name == "script")
                functions_ += child.text + '\n';
        }
    }

    Distribution read() {
        Distribution distribution;
        if (const auto *title = root_.child("title"); title != nullptr)
            distribution.title = trimmed(title->text);
        check("installation-check");
        check("volume-check");
        for (const auto &child : root_.children)
            if (child.name == "choices-outline" && attributeOr(child, "ui", "Installer") == "Installer")
                addLines(child);
        selectAtStart();
        for (const auto &identifier : order_)
            if (selected_.at(identifier))
                addPackages(*choices_.at(identifier), distribution);
        return distribution;
    }

private:
    /// What several references of one identifier say together.
    struct Reference {
        std::string file;
        std::string active = "true";
    };

    void addChoice(const XmlElement &choice) {
        choices_.try_emplace(attributeOr(choice, "id", ""), &choice);
        for (const auto &child : choice.children)
            if (child.name == "pkg-ref")
                addReference(child);
    }

    void addReference(const XmlElement &element) {
        auto &reference = references_[attributeOr(element, "id", "")];
        reference.active = attributeOr(element, "active", reference.active);
        const auto text = trimmed(element.text);
        if (!text.empty())
            reference.file = percentDecoded(text.starts_with('#') ? text.substr(1) : text);
    }

    void addLines(const XmlElement &outline) {
        for (const auto &line : outline.children) {
            if (line.name != "line")
                continue;
            const auto identifier = attributeOr(line, "choice", "");
            if (!choices_.contains(identifier))
                throw ExpansionError("the package's distribution lacks the choice \"" + identifier + "\"");
            if (selected_.try_emplace(identifier, true).second)
                order_.push_back(identifier);
            addLines(line);
        }
    }

    bool holds(const std::string &expression, const std::string &identifier) {
        if (expression == "true" || expression == "false")
            return expression == "true";
        if (!script_) {
            script_.emplace();
            script_->define(functions_);
            for (const auto &[other, selected] : selected_)
                script_->setSelected(other, selected);
        }
        return script_->value(expression, identifier);
    }

    void check(std::string_view name) {
        const auto *element = root_.child(name);
        const auto *expression = element == nullptr ? nullptr : element->attribute("script");
        if (expression != nullptr && !holds(*expression, ""))
            throw ExpansionError("The package's own check refuses the installation.");
    }

    void selectAtStart() {
        for (const auto &identifier : order_)
            select(identifier, attributeOr(*choices_.at(identifier), "start_selected", "true"));
        for (const auto &identifier : order_)
            if (const auto *expression = choices_.at(identifier)->attribute("selected"); expression != nullptr)
                select(identifier, *expression);
    }

    void select(const std::string &identifier, const std::string &expression) {
        const bool selected = holds(expression, identifier);
        selected_[identifier] = selected;
        if (script_)
            script_->setSelected(identifier, selected);
    }

    void addPackages(const XmlElement &choice, Distribution &distribution) {
        for (const auto &child : choice.children) {
            if (child.name != "pkg-ref")
                continue;
            const auto &[file, active] = references_.at(attributeOr(child, "id", ""));
            if (file.empty() || !holds(active, attributeOr(choice, "id", "")) || !added_.insert(file).second)
                continue;
            distribution.selected.push_back({file, attributeOr(choice, "customLocation", "")});
        }
    }

    const XmlElement &root_;
    std::map<std::string, const XmlElement *> choices_;
    std::map<std::string, Reference> references_;
    std::string functions_;
    std::vector<std::string> order_; ///< choices of the outline
    std::map<std::string, bool> selected_;
    std::set<std::string> added_;
    std::optional<ChoiceScript> script_;
};

} // namespace

Distribution readDistribution(std::string_view text) {
    const auto root = parseXml(text);
    if (!root.name.starts_with("installer-"))
        throw ExpansionError("the package's \"Distribution\" holds something else");
    return Reader(root).read();
}

} // namespace vant::tools
