#include "batch.h"

#include <cerrno>
#include <new>
#include <vector>

#include <unistd.h>

#include "output.h"
#include "progress.h"

namespace {

constexpr int kMaxNesting = 100;
constexpr std::size_t kMaxLine = 256u << 20u;
constexpr std::size_t kMaxKeys = 1000;         // an object is searched from its first key on
constexpr std::size_t kMaxValues = 16u << 20u; // each takes 16 bytes
constexpr std::size_t kMaxReason = 300;        // a parser quotes what it met, however long

/// Standard input line by line. What a line holds beyond kMaxLine is read but not kept.
class LineReader {
public:
    /// @return false at the end. A last line without its end counts, an empty one doesn't.
    bool Read(std::string& line, bool& tooLong) {
        line.clear();
        tooLong = false;
        for (bool any = false;; any = true) {
            if (m_Position == m_Size && !Fill())
                return any;
            const std::string_view rest(m_Chunk.data() + m_Position, m_Size - m_Position);
            const std::size_t end = rest.find('\n');
            Keep(rest.substr(0, end), line, tooLong);
            m_Position += end == rest.npos ? rest.size() : end + 1;
            if (end != rest.npos)
                return true;
        }
    }

private:
    static void Keep(std::string_view part, std::string& line, bool& tooLong) {
        tooLong = tooLong || part.size() > kMaxLine - line.size();
        if (tooLong)
            std::string().swap(line);
        else
            line += part;
    }
    /// Takes what is there already: a batch may be a dialogue.
    bool Fill() {
        ssize_t count = 0;
        do
            count = ::read(STDIN_FILENO, m_Chunk.data(), m_Chunk.size());
        while (count < 0 && errno == EINTR);
        if (count < 0)
            Require(sys::Failure("read", "standard input", errno));
        m_Position = 0;
        m_Size = static_cast<std::size_t>(count);
        return count > 0;
    }

    std::vector<char> m_Chunk = std::vector<char>(64 * 1024);
    std::size_t m_Position = 0;
    std::size_t m_Size = 0;
};

using Serve = std::function<std::string(const Json& request)>;

/// Refuses what would take time or memory out of proportion, and what the reader would cut off.
void CheckLine(const std::string& line, bool tooLong) {
    if (tooLong)
        throw BadRequest("line longer than " + std::to_string(kMaxLine) + " bytes");
    if (line.find('\0') != std::string::npos)
        throw BadRequest("a NUL character stands in the line");
    const JsonShape shape = MeasureJson(line);
    if (shape.m_Depth > kMaxNesting)
        throw BadRequest("nested deeper than " + std::to_string(kMaxNesting) + " levels");
    if (shape.m_Keys > kMaxKeys)
        throw BadRequest("more than " + std::to_string(kMaxKeys) + " keys");
    if (shape.m_Values > kMaxValues)
        throw BadRequest("more than " + std::to_string(kMaxValues) + " values");
}

std::string ServeLine(const std::string& line, bool tooLong, const Serve& serve) {
    CheckLine(line, tooLong);
    const Json request = Json::parse(line);
    if (!request.is_object())
        throw BadRequest("not an object");
    return serve(request);
}

std::string ErrorLine(std::string_view reason) {
    return DumpJson({{"error", std::string(reason.substr(0, kMaxReason))}});
}

std::string AnswerLine(const std::string& line, bool tooLong, const Serve& serve) {
    try {
        return ServeLine(line, tooLong, serve);
    } catch (const std::bad_alloc&) {
        return ErrorLine("out of memory");
    } catch (const BadRequest& error) {
        return ErrorLine(error.GetReason());
    } catch (const std::exception& error) {
        return ErrorLine(error.what());
    }
}

} // namespace

ExitCode RunTextBatch(const Serve& serve) {
    if (::isatty(STDIN_FILENO) != 0)
        Progress::Stop();
    LineReader reader;
    std::string line;
    for (bool tooLong = false; reader.Read(line, tooLong);) {
        Output::Get().Write(AnswerLine(line, tooLong, serve) + "\n");
        Output::Get().Flush();
    }
    return ExitCode::done;
}

ExitCode RunBatch(const std::function<Json(const Json& request)>& serve) {
    return RunTextBatch([&](const Json& request) { return DumpJson(serve(request)); });
}

std::string RequireBytes(const Json& request, const char* member) {
    const auto found = request.find(member);
    if (found == request.end())
        throw BadRequest("\"" + std::string(member) + "\" is missing");
    if (!found->is_string())
        throw BadRequest("\"" + std::string(member) + "\" is not a string");
    auto bytes = BytesFromJson(found->get_ref<const std::string&>());
    if (!bytes)
        throw BadRequest("\"" + std::string(member) + "\" holds a character above U+00FF");
    return std::move(*bytes);
}

bool GetFlag(const Json& request, const char* member, bool defaultValue) {
    const auto found = request.find(member);
    if (found == request.end())
        return defaultValue;
    if (!found->is_boolean())
        throw BadRequest("\"" + std::string(member) + "\" is neither true nor false");
    return found->get<bool>();
}
