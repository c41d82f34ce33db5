#include "vyncore/serialization/JSON.h"

#include <nlohmann/json.hpp>

#include <utility>
#include <variant>

namespace vyncore::serialization {

namespace {

using Json = nlohmann::json;

// Takes what the parser finds, piece by piece. What is not yet closed lies on a stack of its own, so that the text's
// nesting costs no depth of calls.
class Builder final : public nlohmann::json_sax<Json> {
public:
    boost::any Take() { return std::move(mResult); }

    bool null() override { return Place({}); }
    bool boolean(bool value) override { return Place(value); }
    bool number_integer(std::int64_t value) override { return Place(value); }
    bool number_unsigned(std::uint64_t value) override { return Place(value); }
    bool number_float(double value, std::string const&) override { return Place(value); }
    bool string(std::string& value) override { return Place(UTF8String(std::move(value))); }
    bool binary(Json::binary_t&) override { return false; }

    bool start_object(std::size_t) override { return Open(JSONObject()); }
    bool start_array(std::size_t) override { return Open(JSONArray()); }
    bool key(std::string& text) override {
        mOpen.back().key = std::move(text);
        return true;
    }
    bool end_object() override { return Close<JSONObject>(); }
    bool end_array() override { return Close<JSONArray>(); }

    bool parse_error(std::size_t, std::string const&, Json::exception const&) override { return false; }

private:
    struct Level {
        std::variant<JSONArray, JSONObject> content;
        UTF8String key;
    };

    bool Open(std::variant<JSONArray, JSONObject> content) {
        if (mOpen.size() == kMostJSONLevels)
            return false;
        mOpen.push_back({std::move(content), {}});
        return true;
    }

    template <class Content>
    bool Close() {
        boost::any closed = std::get<Content>(std::move(mOpen.back().content));
        mOpen.pop_back();
        return Place(std::move(closed));
    }

    bool Place(boost::any value) {
        if (mOpen.empty())
            mResult = std::move(value);
        else if (auto* const array = std::get_if<JSONArray>(&mOpen.back().content))
            array->Append(std::move(value));
        else
            std::get<JSONObject>(mOpen.back().content).Set(mOpen.back().key, std::move(value));
        return true;
    }

    std::vector<Level> mOpen;
    boost::any mResult;
};

} // namespace

boost::any JSONParse(UTF8String const& text) {
    // The parser takes a zero between two words for the end of the text.
    if (text.find('\0') != UTF8String::npos)
        return {};
    Builder builder;
    return Json::sax_parse(text, &builder) ? builder.Take() : boost::any();
}

} // namespace vyncore::serialization
