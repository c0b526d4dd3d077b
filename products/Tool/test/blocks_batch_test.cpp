// quorel blocks tokens, tree, format and convert: what they answer, in a batch and for a file.

#include "quorel_process.h"

#include <gmock/gmock.h>

namespace {

class BlocksBatch : public QuorelProcess {
protected:
    /// The answers of a batch, one for each request. A request that is a string goes as it stands.
    std::vector<json> Batch(const char* subcommand, const std::vector<json>& requests,
                            const std::vector<std::string>& more = {}) {
        std::string lines;
        for (const json& request : requests)
            lines += (request.is_string() ? request.get<std::string>() : request.dump()) + "\n";
        std::vector<std::string> arguments = {"blocks", subcommand, "--batch"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        std::vector<json> answers = RunBatch(arguments, lines);
        EXPECT_EQ(answers.size(), requests.size());
        answers.resize(requests.size());
        return answers;
    }

    json Answer(const char* subcommand, const json& request) {
        return Batch(subcommand, {request})[0];
    }
};

/// A token as short text: its kind, number, text in quotes, line.
std::string Short(const json& token) {
    std::string text = token["kind"];
    if (token.contains("number"))
        text += " " + token["number"].dump();
    if (token.contains("text"))
        text += " " + token["text"].dump();
    return token.contains("line") ? text + " @" + token["line"].dump() : text;
}

std::string ShortTokens(const json& answer) {
    std::string text;
    for (const json& token : answer["tokens"])
        text += (text.empty() ? "" : ", ") + Short(token);
    return text;
}

/// An item as short text.
std::string ShortItem(const json& item) {
    const auto list = [](const json& items, auto make) {
        std::string text;
        for (const json& one : items)
            text += (text.empty() ? "" : "; ") + std::string(make(one));
        return text;
    };
    const auto name = [&](const char* member) {
        return item["nameKind"].get<std::string>() + " " + item[member].get<std::string>();
    };
    if (item.contains("block"))
        return name("block") + "{" + list(item["items"], ShortItem) + "}" +
               list(item["errors"], [](const json& error) {
                   return "!" + error["code"].dump() + "@" + error["line"].dump();
               });
    if (item.contains("function"))
        return name("function") + "(" + list(item["args"], ShortItem) + ")";
    if (item.contains("vector"))
        return name("vector") + "[" + list(item["elements"], Short) + "]";
    return (item.contains("name") ? name("name") + "=" : "") + Short(item["value"]);
}

TEST_F(BlocksBatch, TokensInBothForms) {
    const struct {
        json request;
        std::string tokens;
    } rows[] = {
        {{{"text", ""}}, ""},
        {{{"text", "a=3 ! c\r\n'x\\ty'\n\n-1.50"}},
         R"(Keyword "a" @1, Symbol "=" @1, Int 3 "3" @1, Eol @1, SingleQuotedText "x\ty" @2, )"
         R"(Eol @2, Eol @3, Double -1.5 "-1.50" @4)"},
        {{{"text", "0x1f TRUE \"\" $begin_cdata$ a\nb$end_cdata$ 0x"}},
         R"(Hex 31 "0x1f" @1, True "TRUE" @1, DoubleQuotedText "" @1, CData " a\nb" @1, )"
         R"(Short 0 "0" @1, Keyword "x" @1)"},
        {{{"text", "9007199254740993 12345678901234567168 1e22 1e999 -0.0 0.1"}},
         R"(Int 9007199254740992 "9007199254740993" @1, )"
         R"(Int 12345678901234567168 "12345678901234567168" @1, Double 1e+22 "1e22" @1, )"
         R"(Double null "1e999" @1, Double -0.0 "-0.0" @1, Double 0.1 "0.1" @1)"},
        {{{"text", "\u00e9t\u00e9 '\u20ac \U0001f600'"}},
         "Keyword \"\u00e9t\u00e9\" @1, SingleQuotedText \"\u20ac \U0001f600\" @1"},
        {{{"text", " ! c\n ?"}, {"options", {{"keepComments", true}, {"keepWhiteSpace", true}}}},
         R"(WhiteSpace " " @1, Comment "! c" @1, Eol @1, WhiteSpace " " @2, Symbol "?" @2)"},
        {{{"text", "1.5kg!(x"}, {"options", {{"delimiters", "("}}}},
         R"(Keyword "1.5kg!" @1, Symbol "(" @1, Keyword "x" @1)"},
        {{{"text", "Ab"}, {"options", {{"caseMode", 0}}}}, R"(Keyword "AB" @1)"},
        {{{"bytes", {0, 12, 1, 97, 19, 18, 61, 71, 0, 1, 80, 240, 63, 10, 0, 99}}},
         R"(Keyword "a" @1, Eol @1, Symbol "=" @2, Short 256 @2, Float 1 @2, True @2, )"
         R"(Null @2, Error @2)"},
        {{{"bytes", {0, 80, 240, 127, 80, 248, 127}}}, "Float null @1, Float null @1"},
        {{{"bytes", {0, 12, 2, 195, 65, 13, 0}}}, R"(Null @1, SingleQuotedText "" @1)"}};
    std::vector<json> requests;
    for (const auto& row : rows)
        requests.push_back(row.request);
    const std::vector<json> answers = Batch("tokens", requests);
    for (std::size_t i = 0; i < answers.size(); ++i)
        EXPECT_EQ(ShortTokens(answers[i]), rows[i].tokens) << requests[i];
}

TEST_F(BlocksBatch, TreesWithTheirErrors) {
    const std::string cannotBegin = "begin/end block syntax invalid";
    const struct {
        const char* text;
        std::string blocks;
        std::vector<std::string> errors;
    } rows[] = {
        {"", "", {}},
        {"\n ! only a comment", "", {}},
        {"$begin 'A'\n x=3 y='s'\n 5=1 'q r'=true\n$end 'a'\n$BEGIN B $END",
         R"(SingleQuotedText A{Keyword x=Int 3 "3"; Keyword y=SingleQuotedText "s"; )"
         R"(Int 5=Int 1 "1"; SingleQuotedText q r=True "true"}; Keyword B{})",
         {}},
        {"$begin 'A'\n f(1,,g('x'), k=2, v[1])\n e() v[2: 0x1, w] n[0:]\n$end",
         R"(SingleQuotedText A{Keyword f(Int 1 "1"; Null; )"
         R"(Keyword g(SingleQuotedText "x"); Keyword k=Int 2 "2"; Keyword v[Int 1 "1"]); )"
         R"(Keyword e(); Keyword v[Hex 1 "0x1"; Keyword "w"]; Keyword n[]})",
         {}},
        {"$begin 'A'\nbare\nx=\n=\nx[70000]\nf(1 2)\n$begin 'B'\nz\n$end 'C'\ny=1\n$end 'A'",
         R"(SingleQuotedText A{SingleQuotedText B{}!7@8; !3@9; Keyword y=Int 1 "1"})"
         R"(!7@2; !5@4; !12@5; !10@6)",
         {"A:2: expected a '(' or a '='", "A:4: value is not valid", "A:5: invalid vector size",
          "A:6: expected a ')', ']' or a ','", "B:8: expected a '(' or a '='",
          "B:9: " + cannotBegin}},
        {"$begin 'A' $end 'A'\nx=1\n$begin 'B'", "SingleQuotedText A{}", {":2: " + cannotBegin}},
        {"$begin 5 $end", "Int {}", {}},
        {"$begin", "", {":1: " + cannotBegin}}};
    std::vector<json> requests;
    for (const auto& row : rows)
        requests.push_back({{"text", row.text}});
    const std::vector<json> answers = Batch("tree", requests);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        std::string blocks;
        for (const json& block : answers[i]["blocks"])
            blocks += (blocks.empty() ? "" : "; ") + ShortItem(block);
        EXPECT_EQ(blocks, rows[i].blocks) << rows[i].text;
        EXPECT_EQ(answers[i]["errors"], json(rows[i].errors)) << rows[i].text;
        // The same for a file, told by the exit code.
        const Ran ran = Run({"blocks", "tree", "-"}, rows[i].text);
        EXPECT_EQ(json::parse(ran.out), answers[i]);
        EXPECT_EQ(ran.code, rows[i].errors.empty() ? 0 : 1);
        EXPECT_EQ(ran.err, "");
    }
}

TEST_F(BlocksBatch, TreeOfTheFormNamesEachMember) {
    EXPECT_EQ(Answer("tree", {{"text", "$begin 'A'\nx=3\nf('a', -)\nv[1:0.5]\n$end"}}),
              json::parse(R"({"blocks": [{"block": "A", "nameKind": "SingleQuotedText", "items": [
        {"name": "x", "nameKind": "Keyword", "value": {"kind": "Int", "number": 3, "text": "3"}},
        {"vector": "v", "nameKind": "Keyword",
         "elements": [{"kind": "Double", "number": 0.5, "text": "0.5"}]}],
        "errors": [{"code": 5, "line": 3}]}], "errors": ["A:3: value is not valid"]})"));
}

TEST_F(BlocksBatch, NamesWithoutTextTellWhatTheyAre) {
    // $begin 'A' 5=1 true=2 $end, in binary
    const json answer =
        Answer("tree", {{"bytes", {0,  12, 6, 36, 98, 101, 103, 105, 110, 13, 1,  65,  70,  5,  18,
                                   61, 70, 1, 10, 18, 61,  70,  2,   12,  4,  36, 101, 110, 100}}});
    EXPECT_EQ(ShortItem(answer["blocks"][0]),
              "SingleQuotedText A{Short 5=Short 1; True true=Short 2}");
}

TEST_F(BlocksBatch, FormatGivesTextAndErrors) {
    const struct {
        const char* text;
        const char* answer;
    } rows[] = {
        {"", R"({"text": "", "errors": []})"},
        {"$begin a x=1.50 'b c'='\td' $end",
         R"({"text": "$begin 'a'\n\tx=1.50\n\t'b c'='\\\td'\n$end 'a'\n", "errors": []})"},
        {"$begin 'a'\nx\ny=1\n$end",
         R"({"text": "$begin 'a'\n\ty=1\n$end 'a'\n", "errors": ["a:2: expected a '(' or a '='"]})"},
        {"$begin '$Base_index$' $end\n$begin a $end\n$begin '$index$'\n$end",
         R"({"text": "$begin 'a'\n$end 'a'\n", "errors": [],
             "dropped": ["$Base_index$", "$index$"]})"}};
    std::vector<json> requests;
    for (const auto& row : rows)
        requests.push_back({{"text", row.text}});
    const std::vector<json> answers = Batch("format", requests);
    for (std::size_t i = 0; i < answers.size(); ++i)
        EXPECT_EQ(answers[i], json::parse(rows[i].answer)) << rows[i].text;
}

TEST_F(BlocksBatch, ConvertGivesTheOtherFormAndBack) {
    const char* const text = "$begin 'A'\n\tx=3\n\tr=0.10000000000000001\n\tf('a', b, 256)\n"
                             "\tv[2: 1, -1]\n$end 'A'\n";
    const json there = Answer("convert", {{"text", text}, {"to", "binary"}});
    ASSERT_EQ(there["bytes"][0], 0) << there;
    EXPECT_EQ(Answer("convert", {{"bytes", there["bytes"]}, {"to", "text"}}),
              json({{"text", text}}));
    EXPECT_EQ(Answer("convert", {{"bytes", there["bytes"]}}), there) << "its own form by default";
    EXPECT_EQ(Answer("convert", {{"text", text}}), json({{"text", text}}));
    EXPECT_EQ(Answer("convert", {{"text", "$begin A\nx\n$end"}}),
              json({{"error", "A:2: expected a '(' or a '='"}}));
}

TEST_F(BlocksBatch, WhatCannotBeServedIsAnErrorAndTheNextLineIsRead) {
    const std::vector<json> bad = {R"({"text": 1})",
                                   R"({"text": "", "bytes": []})",
                                   R"({})",
                                   R"({"bytes": "0"})",
                                   R"({"bytes": [256]})",
                                   R"({"bytes": [-1]})",
                                   R"({"bytes": [18446744073709551615]})",
                                   R"({"bytes": [1.0]})",
                                   R"({"bytes": [[0]]})"};
    const std::vector<json> badOptions = {R"({"text": "", "options": []})",
                                          R"({"text": "", "options": {"keepComments": 1}})",
                                          R"({"text": "", "options": {"keepWhiteSpace": null}})",
                                          R"({"text": "", "options": {"caseMode": 4}})",
                                          R"({"text": "", "options": {"caseMode": "2"}})",
                                          R"({"text": "", "options": {"caseMode": 1.0}})",
                                          R"({"text": "", "options": {"delimiters": 1}})"};
    for (const char* subcommand : {"tokens", "tree", "format", "convert"}) {
        std::vector<json> requests = bad;
        if (subcommand == std::string("tokens"))
            requests.insert(requests.end(), badOptions.begin(), badOptions.end());
        if (subcommand == std::string("convert"))
            requests.insert(requests.end(),
                            {R"({"text": "", "to": "xml"})", R"({"text": "", "to": 1})"});
        requests.push_back({{"text", ""}});
        const std::vector<json> answers = Batch(subcommand, requests);
        for (std::size_t i = 0; i + 1 < answers.size(); ++i) {
            EXPECT_EQ(answers[i].size(), 1u) << subcommand << requests[i];
            EXPECT_TRUE(answers[i].contains("error")) << subcommand << requests[i];
        }
        EXPECT_FALSE(answers.back().contains("error")) << subcommand;
    }
}

TEST_F(BlocksBatch, NestingIsBoundedInEitherForm) {
    const auto repeat = [](int count, std::string_view text) {
        std::string all;
        while (count-- > 0)
            all += text;
        return all;
    };
    json bytes = {0, 12, 6, 36, 98, 101, 103, 105, 110, 13, 1, 97}; // $begin 'a'
    for (int i = 0; i < 30'000; ++i)
        bytes.insert(bytes.end(), {12, 1, 102, 18, 40}); // f(
    const std::pair<json, std::size_t> rows[] = {
        {{{"text", repeat(1000, "$begin a ") + repeat(1000, "f(") + repeat(1000, ")")}}, 0},
        {{{"text", repeat(3000, "$begin a\n")}}, 2000},
        {{{"text", "$begin a\n" + repeat(30'000, "f(") + "\ny()"}}, 1},
        {{{"bytes", bytes}}, 1}};
    std::string lines;
    for (const auto& [request, errors] : rows)
        lines += request.dump() + "\n";
    EXPECT_EQ(Run({"blocks", "format", "--batch"}, lines).code, 0);
    const Ran ran = Run({"blocks", "tree", "--batch"}, lines);
    EXPECT_EQ(ran.code, 0);
    std::istringstream answers(ran.out);
    std::string answer;
    for (const auto& [request, errors] : rows) {
        ASSERT_TRUE(std::getline(answers, answer));
        std::size_t found = 0;
        for (std::size_t at = 0; (at = answer.find("{\"code\":4,", at)) != answer.npos; ++at)
            ++found;
        EXPECT_EQ(found, errors);
    }
}

} // namespace
