#include "edit_request.h"

#include <algorithm>

#include "batch.h"

namespace {

const Json* Find(const Json& json, const char* member) {
    const auto found = json.find(member);
    return found == json.end() ? nullptr : &*found;
}

[[noreturn]] void Refuse(const char* member, const char* what) {
    throw BadRequest("\"" + std::string(member) + "\" is " + what);
}

std::vector<std::string> ReadActions(const Json& json) {
    if (!json.is_array())
        Refuse("script", "not an array");
    std::vector<std::string> actions;
    for (const Json& action : json) {
        if (!action.is_string())
            Refuse("script", "not an array of strings");
        actions.push_back(action.get<std::string>());
    }
    return actions;
}

/// An option as --option has it.
std::string ReadOption(const std::string& key, const Json& value) {
    if (key.empty() || key.find('=') != std::string::npos)
        Refuse("options", "an object with a key that is empty or holds a =");
    if (value.is_string())
        return key + '=' + value.get_ref<const std::string&>();
    if (!value.is_number())
        Refuse("options", "an object with a value that is neither number nor string");
    return key + '=' + value.dump();
}

void ReadOptions(const Json& json, std::vector<std::string>& options) {
    if (!json.is_object())
        Refuse("options", "not an object");
    for (const auto& [key, value] : json.items())
        options.push_back(ReadOption(key, value));
}

CSize ReadCells(const Json& json) {
    const auto isSide = [](const Json& side) {
        return side.is_number_integer() && side >= 1 && side <= kMostCells;
    };
    if (!json.is_array() || json.size() != 2 || !std::ranges::all_of(json, isSide))
        Refuse("window", "not two numbers from 1 to 1000");
    return {json[0].get<int>(), json[1].get<int>()};
}

std::string ReadEditor(const Json& json) {
    if (!json.is_string() || !IsEditor(json.get_ref<const std::string&>()))
        Refuse("editor", "not netlist, javascript or vbscript");
    return json.get<std::string>();
}

} // namespace

EditRequest ReadRequest(const Json& json, const EditRequest& defaults) {
    EditRequest request = defaults;
    if (json.contains("text"))
        request.m_Archive = RequireBytes(json, "text");
    if (const Json* script = Find(json, "script"))
        request.m_Script = ReadActions(*script);
    if (const Json* options = Find(json, "options"))
        ReadOptions(*options, request.m_Session.m_Options);
    if (const Json* editor = Find(json, "editor"))
        request.m_Session.m_Editor = ReadEditor(*editor);
    if (const Json* window = Find(json, "window"))
        request.m_Cells = ReadCells(*window);
    return request;
}
