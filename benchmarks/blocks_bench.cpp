// Trees of blocks: text to tree and back, binary to tree and back, memory, look-ups and the index,
// beside the libraries that a user would pick instead, on the same tree in each one's form.

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
#include "peer_bench.h"
#include "raw_streambufs.h"
#include "token_istream.h"
#include "token_ostream.h"

namespace {

using namespace io;

constexpr int kRounds = 9;
constexpr const char* kUnit = "ns/item";

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

/// Rows for reading into a fresh T: the time, one round untimed, and the memory that it then holds.
template <class T, class Parse>
void Read(const std::string& work, const std::string& who, int rounds, Parse parse) {
    auto tree = std::make_unique<T>();
    const std::size_t before = UsedBytes();
    parse(*tree);
    const std::size_t after = UsedBytes();
    if (work == "blocks: text to tree")
        bench::Row("blocks: memory held by the tree", who, "MB",
                   static_cast<double>(after - before) / 1e6);
    const double time = bench::TimeOf(
        rounds, [&] { tree = std::make_unique<T>(); }, [&] { parse(*tree); });
    bench::Row(work, who, kUnit, time / work::kLeafItems);
}

template <class Write>
void WriteTree(const std::string& work, const std::string& who, Write write) {
    write();
    bench::Row(work, who, kUnit, bench::TimeOf(kRounds, write) / work::kLeafItems);
}

void Ours(std::string& text) {
    Read<CBlock>("blocks: text to tree", "quorel", kRounds,
                 [&](CBlock& tree) { ReadBytes(text, tree); });
    CBlock tree;
    ReadBytes(text, tree);
    Check(!tree.HasErrors(true) && WriteBytes(tree, 0) == text, "the text does not come back");
    WriteTree("blocks: tree to text", "quorel", [&] { bench::Keep(WriteBytes(tree, 0)); });
    WriteTree("blocks: tree to binary", "quorel", [&] { bench::Keep(WriteBytes(tree, kBinary)); });
    std::string binary = WriteBytes(tree, kBinary);
    Read<CBlock>("blocks: binary to tree", "quorel", kRounds,
                 [&](CBlock& read) { ReadBytes(binary, read); });
}

void RapidJson(const std::string& json) {
    using Document = rapidjson::Document;
    const auto parse = [&](Document& document) {
        document.Parse<rapidjson::kParseFullPrecisionFlag>(json.data(), json.size());
        Check(!document.HasParseError(), "JSON does not parse");
    };
    Read<Document>("blocks: text to tree", "RapidJSON", kRounds, parse);
    Document document;
    parse(document);
    WriteTree("blocks: tree to text", "RapidJSON", [&] {
        rapidjson::StringBuffer buffer;
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        writer.SetIndent('\t', 1);
        document.Accept(writer);
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

void PugiXml(const std::string& xml) {
    const auto parse = [&](pugi::xml_document& document) {
        Check(document.load_buffer(xml.data(), xml.size()), "XML does not parse");
        Number_walk walk;
        document.traverse(walk);
        bench::Keep(walk.sum);
    };
    Read<pugi::xml_document>("blocks: text to tree", "pugixml", kRounds, parse);
    pugi::xml_document document;
    parse(document);
    struct Writer : pugi::xml_writer {
        std::string bytes;
        void write(const void* data, std::size_t size) override {
            bytes.append(static_cast<const char*>(data), size);
        }
    };
    WriteTree("blocks: tree to text", "pugixml", [&] {
        Writer writer;
        document.save(writer, "\t");
        bench::Keep(writer.bytes);
    });
}

void NlohmannJson(const std::string& json) {
    using Json = nlohmann::json;
    Read<Json>("blocks: text to tree", "nlohmann-json", kRounds,
               [&](Json& tree) { tree = Json::parse(json); });
    const Json tree = Json::parse(json);
    WriteTree("blocks: tree to text", "nlohmann-json", [&] { bench::Keep(tree.dump(1, '\t')); });
    WriteTree("blocks: tree to binary", "MessagePack, nlohmann-json",
              [&] { bench::Keep(Json::to_msgpack(tree)); });
    const std::vector<std::uint8_t> bytes = Json::to_msgpack(tree);
    Read<Json>("blocks: binary to tree", "MessagePack, nlohmann-json", kRounds,
               [&](Json& read) { read = Json::from_msgpack(bytes); });
}

void Protobuf(const peers::Block& tree) {
    using google::protobuf::TextFormat;
    std::string text, binary;
    TextFormat::PrintToString(tree, &text);
    Check(tree.SerializeToString(&binary), "protobuf does not write");
    Read<peers::Block>("blocks: text to tree", "protobuf text", 3,
                       [&](peers::Block& read) { TextFormat::ParseFromString(text, &read); });
    Read<peers::Block>("blocks: binary to tree", "protobuf", kRounds,
                       [&](peers::Block& read) { read.ParseFromString(binary); });
    WriteTree("blocks: tree to binary", "protobuf", [&] {
        std::string bytes;
        tree.SerializeToString(&bytes);
        bench::Keep(bytes);
    });
}

void YamlCpp(const std::string& yaml) {
    Read<YAML::Node>("blocks: text to tree", "yaml-cpp", 1,
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
    Ours(text);
    RapidJson(peers.GetJson());
    PugiXml(peers.GetXml());
    NlohmannJson(peers.GetJson());
    Protobuf(peers.GetProto());
    YamlCpp(peers.GetYaml());
    LookUps(100000, "quorel");
    LookUps(1000, "quorel, 1,000 items");
    Seeks();
}
