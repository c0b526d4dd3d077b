/// quorel blocks tokens: how a file falls apart into tokens.
#include <memory>
#include <optional>

#include "batch.h"
#include "blocks_command.h"
#include "blocks_file.h"
#include "blocks_json.h"
#include "delimiter_grammar.h"
#include "input_file.h"
#include "token_binarystreambuf.h"
#include "token_textstreambuf.h"

namespace {

constexpr int kLastCaseMode = static_cast<int>(io::CaseMode::Ignore);

/// How tokens are read.
struct TokenReading {
    std::optional<AString> delimiters; ///< the delimiter grammar with these, not the token grammar
    bool keepComments = false;
    bool keepWhiteSpace = false;
    io::CaseMode caseMode = io::CaseMode::Ignore;
};

struct TokensOptions {
    BlocksInputOptions m_Input;
    std::string m_Delimiters;
    bool m_KeepComments = false;
    bool m_KeepWhiteSpace = false;
    int m_CaseMode = kLastCaseMode;
    bool m_Json = false; ///< it is JSON in any case
};

/// A token buffer over bytes in memory. No token stream: that drops what it isn't told to keep
/// before it can be told.
class TokenSource {
public:
    TokenSource(std::string bytes, const TokenReading& reading) : m_Bytes(std::move(bytes)) {
        if (m_Bytes.GetForm() == BlocksForm::kBinary)
            m_Buffer = std::make_unique<io::CToken_binarystreambuf>(&m_Bytes.GetUnits());
        else
            MakeText(reading.delimiters);
        m_Buffer->SetKeepComments(reading.keepComments);
        m_Buffer->SetKeepWhiteSpace(reading.keepWhiteSpace);
        m_Buffer->SetCaseMode(reading.caseMode);
        if (m_Bytes.GetForm() == BlocksForm::kBinary)
            m_Buffer->NextToken(); // the header
    }

    /// The next token; null at the end.
    const io::CToken* Next() {
        const io::CToken& token = m_Buffer->NextToken();
        return token.GetKind() == io::TokenKind::Eof ? nullptr : &token;
    }
    int GetLine() const { return m_Buffer->GetTokenLine(); }

private:
    void MakeText(const std::optional<AString>& delimiters) {
        if (delimiters)
            m_Grammar = std::make_unique<io::CDelimiter_grammar>(delimiters->c_str());
        io::CBase_grammar& usual = io::CToken_grammar_default::Get();
        auto text = std::make_unique<io::CToken_textstreambuf>(&m_Bytes.GetUnits(),
                                                               m_Grammar ? *m_Grammar : usual);
        text->SetKeepText(true);
        m_Buffer = std::move(text);
    }

    BlocksBytes m_Bytes;
    std::unique_ptr<io::CBase_grammar> m_Grammar;
    std::unique_ptr<io::CToken_streambuf> m_Buffer;
};

void AppendTokens(std::string bytes, const TokenReading& reading, BlocksJson& json) {
    TokenSource source(std::move(bytes), reading);
    bool isFirst = true;
    json << "{\"tokens\":[";
    while (const io::CToken* token = source.Next()) {
        json.NextElement(std::exchange(isFirst, false));
        json << "{";
        json.AppendTokenMembers(*token);
        json << ",\"line\":" << std::to_string(source.GetLine()) << "}";
    }
    json.EndList();
    json << "}";
}

// --- Options of a request ---

void TakeDelimiters(const Json& options, TokenReading& reading) {
    const auto found = options.find("delimiters");
    if (found == options.end())
        return;
    if (!found->is_string())
        throw BadRequest("\"delimiters\" is not a string");
    reading.delimiters =
        AString::FromMultiByte(AString::kUtf8, found->get_ref<const std::string&>());
}

void TakeCaseMode(const Json& options, TokenReading& reading) {
    const auto found = options.find("caseMode");
    if (found == options.end())
        return;
    const bool isMode = found->is_number_integer() && found->get<std::int64_t>() >= 0 &&
                        found->get<std::int64_t>() <= kLastCaseMode;
    if (!isMode)
        throw BadRequest("\"caseMode\" is not a number from 0 to 3");
    reading.caseMode = static_cast<io::CaseMode>(found->get<int>());
}

/// What the command line says, and the request instead where it says something.
TokenReading TakeReading(const Json& request, TokenReading reading) {
    const auto options = request.find("options");
    if (options == request.end())
        return reading;
    if (!options->is_object())
        throw BadRequest("\"options\" is not an object");
    TakeDelimiters(*options, reading);
    reading.keepComments = GetFlag(*options, "keepComments", reading.keepComments);
    reading.keepWhiteSpace = GetFlag(*options, "keepWhiteSpace", reading.keepWhiteSpace);
    TakeCaseMode(*options, reading);
    return reading;
}

std::string ServeTokens(const Json& request, const TokenReading& defaults) {
    BlocksJson json(BlocksJson::Target::kKept);
    const TokenReading reading = TakeReading(request, defaults);
    AppendTokens(RequireInput(request), reading, json);
    return json.GetText();
}

ExitCode Tokens(const TokensOptions& options) {
    TokenReading reading;
    if (options.m_Input.m_Command->count("--delimiters") > 0)
        reading.delimiters = AString::FromMultiByte(AString::kUtf8, options.m_Delimiters);
    reading.keepComments = options.m_KeepComments;
    reading.keepWhiteSpace = options.m_KeepWhiteSpace;
    reading.caseMode = static_cast<io::CaseMode>(options.m_CaseMode);
    if (options.m_Input.IsBatch())
        return RunTextBatch([&](const Json& request) { return ServeTokens(request, reading); });
    BlocksJson json(BlocksJson::Target::kStandardOutput);
    AppendTokens(ReadInput(options.m_Input.m_File), reading, json);
    json.End();
    return ExitCode::done;
}

} // namespace

void AddBlocksTokens(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<TokensOptions>();
    CLI::App& command = AddCommand(
        parent, "tokens", "Prints the tokens with their lines as JSON",
        "quorel blocks tokens --keep-comments samples/parts.blk\n\n"
        "A line of a batch is {\"text\": \"...\"} or {\"bytes\": [0, 12, ...]}, with \"options\":\n"
        "  {\"delimiters\": \"(),=\", \"keepComments\": true, \"keepWhiteSpace\": true, "
        "\"caseMode\": 2}");
    options->m_Input.AddTo(command, true);
    command
        .add_option("--delimiters", options->m_Delimiters,
                    "Words fall apart at these characters and at blanks alone")
        ->type_name("CHARS");
    command.add_flag("--keep-comments", options->m_KeepComments, "Comments are tokens");
    command.add_flag("--keep-white-space", options->m_KeepWhiteSpace, "Runs of blanks are tokens");
    command
        .add_option("--case-mode", options->m_CaseMode,
                    "Words become upper case (0) or lower case (1) or stay (2, 3; default 3)")
        ->type_name("N")
        ->check(CLI::Range(0, kLastCaseMode).description(""));
    command.add_flag("--json", options->m_Json, "Changes nothing: the tokens are JSON");
    OnRun(command, choice, options, &Tokens);
}
