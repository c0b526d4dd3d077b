// Trees of blocks: text to tree and back, binary to tree and back, release, memory, look-ups and
// the index, beside the libraries that a user would pick instead, on the same tree in each one's
// form.

#include <malloc.h>

#include <memory>
#include <streambuf>

#include <google/protobuf/text_format.h>
#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <yaml-cpp/yaml.h>

#include "block_named_value.h"
#include "block_peers.h"
#include "block_text.h"
#include "block_turns.h"
#include "peer_bench.h"
#include "raw_streambufs.h"
#include "token_istream.h"
#include "token_ostream.h"

namespace {

using namespace io;

constexpr int kRounds = 15;

void Check(bool isGood, const char* what) {
    if (isGood)
        return;
    std::fprintf(stderr, "blocks_bench: %s\n", what);
    std::exit(1);
}

// --- Bytes in memory ---

struct Source : std::streambuf {
    explicit Source(std::string& bytes) {
        setg(bytes.data(), bytes.data(), bytes.data() + bytes.size());
    }
};

struct Sink : std::streambuf {
    std::string bytes;

protected:
    std::streamsize xsputn(const char* data, std::streamsize count) override {
        bytes.append(data, static_cast<std::size_t>(count));
        return count;
    }
    int_type overflow(int_type byte) override {
        bytes += static_cast<char>(byte);
        return byte;
    }
    pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override {
        return pos_type(static_cast<off_type>(bytes.size()));
    }
};

void ReadBytes(std::string& bytes, CBlock& block) {
    Source source(bytes);
    CByte_streambuf units(source);
    CRawIstream raw(&units);
    CToken_istream stream(raw, &CToken_grammar_default::Get(), 0,
                          CToken_istream::Form::kAutodetect);
    block.Read(stream);
}

std::string WriteBytes(const CBlock& block, unsigned flags) {
    Sink sink;
    {
        CByte_streambuf units(sink);
        CRawOstream raw(&units);
        CToken_ostream stream(raw, &CToken_grammar_default::Get(), flags);
        block.Write(stream);
        stream.Close();
    }
    return std::move(sink.bytes);
}

// --- Each library's work ---

std::size_t UsedBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

const std::string kReadText = "blocks: text to tree";
const std::string kWriteText = "blocks: tree to text";
const std::string kReadBinary = "blocks: binary to tree";
const std::string kWriteBinary = "blocks: tree to binary";

/// Reading into a fresh T, which is released before anybody else's turn.
template <class T, class Parse>
void Read(work::Turns& turns, const std::string& work, const std::string& who, int rounds,
          Parse parse) {
    const auto tree = std::make_shared<std::unique_ptr<T>>();
    const auto make = [tree] { *tree = std::make_unique<T>(); };
    const auto read = [tree, parse] { parse(**tree); };
    const auto release = [tree] { tree->reset(); };
    if (work != kReadText) {
        turns.Add(work, who, rounds, {make, read, release});
        return;
    }
    turns.Add(work, who, rounds, {make, read, {}});
    turns.Add("blocks: release of the tree", who, rounds, {{}, release, {}});
    make();
    const std::size_t before = UsedBytes();
    read();
    bench::Row("blocks: memory held by the tree", who, "MB",
               static_cast<double>(UsedBytes() - before) / 1e6);
    release();
}

template <class Write>
void WriteTree(work::Turns& turns, const std::string& work, const std::string& who, Write write) {
    turns.Add(work, who, kRounds, {{}, write, {}});
}

void Ours(work::Turns& turns, std::string& text, const CBlock& tree) {
    Check(!tree.HasErrors(true) && WriteBytes(tree, 0) == text, "the text does not come back");
    Read<CBlock>(turns, kReadText, "quorel", kRounds, [&](CBlock& read) { ReadBytes(text, read); });
    WriteTree(turns, kWriteText, "quorel", [&] { bench::Keep(WriteBytes(tree, 0)); });
    WriteTree(turns, kWriteBinary, "quorel", [&] { bench::Keep(WriteBytes(tree, kBinary)); });
    const auto binary = std::make_shared<std::string>(WriteBytes(tree, kBinary));
    Read<CBlock>(turns, kReadBinary, "quorel", kRounds,
                 [binary](CBlock& read) { ReadBytes(*binary, read); });
}

void RapidJson(work::Turns& turns, const std::string& json) {
    using Document = rapidjson::Document;
    const auto parse = [&](Document& document) {
        document.Parse<rapidjson::kParseFullPrecisionFlag>(json.data(), json.size());
        Check(!document.HasParseError(), "JSON does not parse");
    };
    Read<Document>(turns, kReadText, "RapidJSON", kRounds, parse);
    const auto document = std::make_shared<Document>();
    parse(*document);
    WriteTree(turns, kWriteText, "RapidJSON", [document] {
        rapidjson::StringBuffer buffer;
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        writer.SetIndent('\t', 1);
        document->Accept(writer);
        bench::Keep(buffer.GetSize());
    });
}

/// Converts every number of a document, as a JSON parser does while it parses.
struct Number_walk : pugi::xml_tree_walker {
    bool for_each(pugi::xml_node& node) override {
        if (node.name()[0] == 'n' && !node.name()[1])
            sum += node.attribute("v").as_double();
        else if (node.name()[0] == 'i' && !node.name()[1])
            sum += node.text().as_double();
        return true;
    }
    double sum = 0;
};

void PugiXml(work::Turns& turns, const std::string& xml) {
    const auto parse = [&](pugi::xml_document& document) {
        Check(document.load_buffer(xml.data(), xml.size()), "XML does not parse");
        Number_walk walk;
        document.traverse(walk);
        bench::Keep(walk.sum);
    };
    Read<pugi::xml_document>(turns, kReadText, "pugixml", kRounds, parse);
    const auto document = std::make_shared<pugi::xml_document>();
    parse(*document);
    struct Writer : pugi::xml_writer {
        std::string bytes;
        void write(const void* data, std::size_t size) override {
            bytes.append(static_cast<const char*>(data), size);
        }
    };
    WriteTree(turns, kWriteText, "pugixml", [document] {
        Writer writer;
        document->save(writer, "\t");
        bench::Keep(writer.bytes);
    });
}

void NlohmannJson(work::Turns& turns, const std::string& json) {
    using Json = nlohmann::json;
    Read<Json>(turns, kReadText, "nlohmann-json", kRounds,
               [&](Json& tree) { tree = Json::parse(json); });
    const auto tree = std::make_shared<const Json>(Json::parse(json));
    WriteTree(turns, kWriteText, "nlohmann-json", [tree] { bench::Keep(tree->dump(1, '\t')); });
    const char* const who = "MessagePack, nlohmann-json";
    WriteTree(turns, kWriteBinary, who, [tree] { bench::Keep(Json::to_msgpack(*tree)); });
    Read<Json>(turns, kReadBinary, who, kRounds,
               [bytes = Json::to_msgpack(*tree)](Json& read) { read = Json::from_msgpack(bytes); });
}

void Protobuf(work::Turns& turns, const peers::Block& tree) {
    using google::protobuf::TextFormat;
    std::string text, binary;
    TextFormat::PrintToString(tree, &text);
    Check(tree.SerializeToString(&binary), "protobuf does not write");
    Read<peers::Block>(turns, kReadText, "protobuf text", 3,
                       [text](peers::Block& read) { TextFormat::ParseFromString(text, &read); });
    Read<peers::Block>(turns, kReadBinary, "protobuf", kRounds,
                       [binary](peers::Block& read) { read.ParseFromString(binary); });
    WriteTree(turns, kWriteBinary, "protobuf", [&tree] {
        std::string bytes;
        tree.SerializeToString(&bytes);
        bench::Keep(bytes);
    });
}

void YamlCpp(work::Turns& turns, const std::string& yaml) {
    Read<YAML::Node>(turns, kReadText, "yaml-cpp", 1,
                     [&](YAML::Node& tree) { tree = YAML::Load(yaml); });
}

// --- Look-ups: what grows with the block, and what doesn't ---

AString ItemName(int number) {
    AString name;
    name.Format(u"Item_%d", number);
    return name;
}

void LookUps(int count, const std::string& who) {
    CBlock block(AString("A"));
    std::vector<CBlock_named_value> inOrder, random;
    for (int i = 0; i < count; ++i) {
        inOrder.emplace_back(ItemName(i), i);
        random.emplace_back(ItemName(static_cast<int>(i * 7919LL % count)), 0);
        block.Add(inOrder.back());
    }
    const auto getAll = [&](std::vector<CBlock_named_value>& values) {
        for (CBlock_named_value& value : values)
            Check(block.Get(value), "an item is not found");
    };
    getAll(random); // builds the index
    const double number = count;
    bench::Row("blocks: Get of a name at random", who, "ns",
               bench::TimeOfShort(kRounds, [&] { getAll(random); }) / number);
    bench::Row("blocks: Get in stored order", who, "ns",
               bench::TimeOfShort(kRounds, [&] { getAll(inOrder); }) / number);
}

/// 10,000 blocks of 10 kB, reached through a stored index.
void Seeks() {
    constexpr int kBlocks = 10000;
    Sink sink;
    {
        CByte_streambuf units(sink);
        CRawOstream raw(&units);
        CToken_ostream stream(raw);
        CBlock block;
        block.Add(CBlock_named_value(AString("text"), AString(9900, u'x')));
        for (int i = 0; i < kBlocks; ++i) {
            block.SetName(ItemName(i));
            block.Write(stream);
        }
        stream.Close();
    }
    std::stringbuf bytes(sink.bytes);
    CByte_streambuf units(bytes);
    CRawIstream raw(&units);
    CToken_istream stream(raw);
    Check(stream.BuildIndex(kFastScan), "no index");
    int next = 0;
    const auto seek = [&] {
        next = (next + 7919) % kBlocks;
        Check(stream.SeekBlock(ItemName(next)) && stream.IsBegin(), "a block is not found");
    };
    const std::string work = "blocks: SeekBlock among 10,000 blocks in 100 MB";
    bench::Row(work, "quorel", "us", bench::TimeOfShort(kRounds, seek) / 1000);
    bench::Row(work, "the aim", "us", 1000);
}

} // namespace

int main() {
    // Freed memory stays mapped, so that each round sees a warm heap whoever ran before.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    std::string text = work::BlockText::Make();
    CBlock tree;
    ReadBytes(text, tree);
    const work::BlockPeers peers(tree);
    work::Turns turns;
    Ours(turns, text, tree);
    RapidJson(turns, peers.GetJson());
    PugiXml(turns, peers.GetXml());
    NlohmannJson(turns, peers.GetJson());
    Protobuf(turns, peers.GetProto());
    YamlCpp(turns, peers.GetYaml());
    turns.Run(work::kLeafItems);
    LookUps(100000, "quorel");
    LookUps(1000, "quorel, 1,000 items");
    Seeks();
}
