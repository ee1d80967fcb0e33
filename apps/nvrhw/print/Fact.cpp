#include "print/Fact.h"

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json; // keys stay in their order

Json toJson(const Value& value);

struct ToJson {
    Json operator()(std::monostate /*unknown*/) const { return {}; }
    Json operator()(const Record& record) const {
        Json object = Json::object();
        for (const Fact& fact : record) {
            if (!fact.key.empty()) {
                object[fact.key] = toJson(fact.value);
            }
        }
        return object;
    }
    Json operator()(const std::vector<Record>& records) const {
        Json array = Json::array();
        for (const Record& record : records) {
            array.push_back((*this)(record));
        }
        return array;
    }
    template <typename T> Json operator()(const T& plain) const { return plain; }
};

Json toJson(const Value& value) { return std::visit(ToJson(), value); }

struct ToWords {
    std::string operator()(std::monostate /*unknown*/) const { return "-"; }
    std::string operator()(bool flag) const { return flag ? "yes" : "no"; }
    std::string operator()(const std::string& text) const { return text; }
    template <typename T> std::string operator()(const T& other) const {
        return toJson(Value(other)).dump();
    }
};

} // namespace

std::string Fact::words() const { return text.empty() ? std::visit(ToWords(), value) : text; }

std::string jsonText(const Value& value, int indent) {
    return toJson(value).dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}
