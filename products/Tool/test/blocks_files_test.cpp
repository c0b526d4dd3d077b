// quorel blocks check, format, convert, index and get: files as they go in and come out.

#include "quorel_process.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

const std::string kSample = QUOREL_SOURCE_DIR "/samples/parts.blk";
const char* const kFaulty = "$begin 'A'\nbare\nx=1\n$end\n";

class BlocksFiles : public QuorelProcess {
protected:
    Ran Blocks(std::vector<std::string> arguments, const std::string& input = {}) const {
        arguments.insert(arguments.begin(), "blocks");
        return Run(arguments, input);
    }
    /// The tree of a file, all but what another form may change: the kinds of numbers and names and
    /// the letters that a number, true or false was written with.
    json Tree(const std::string& file) const {
        json tree = json::parse(Blocks({"tree", file}).out);
        MakePlain(tree);
        return tree;
    }

private:
    static bool IsBool(const json& value) {
        return value.is_object() &&
               (value.value("kind", "") == "True" || value.value("kind", "") == "False");
    }
    static void MakePlain(json& value) {
        if (value.contains("number"))
            value = json(value["number"]);
        else if (IsBool(value))
            value = json(value["kind"]);
        else if (value.is_object())
            value.erase("nameKind");
        if (value.is_structured())
            for (json& part : value)
                MakePlain(part);
    }
};

TEST_F(BlocksFiles, EndWithTheExitCodeOfTheirFault) {
    const std::string good = Write("good", "$begin A x=1 $end");
    const std::string faulty = Write("faulty", kFaulty);
    const std::string out = Path("out");
    const std::string error = "A:2: expected a '(' or a '='\n";
    // err: a part of it; for no error all
    const std::tuple<std::vector<std::string>, int, std::string, std::string> rows[] = {
        {{"check", good}, 0, "", ""},
        {{"check", faulty}, 1, "", error},
        {{"check", "--json", faulty}, 1, "{\"errors\":[\n\"A:2: expected a '(' or a '='\"]}\n", ""},
        {{"check", "-"}, 1, "", ":1: begin/end block syntax invalid\n"},
        {{"format", good}, 0, "$begin 'A'\n\tx=1\n$end 'A'\n", ""},
        {{"format", faulty}, 1, "", error},
        {{"format", "--force", faulty}, 1, "$begin 'A'\n\tx=1\n$end 'A'\n", error},
        {{"convert", faulty, "--output", out}, 1, "", error},
        {{"index", faulty, "--output", out}, 1, "", error},
        {{"convert", good, "--output", "-"}, 0, "$begin 'A'\n\tx=1\n$end 'A'\n", ""},
        {{"get", good, "a"}, 0, "$begin 'A'\n\tx=1\n$end 'A'\n", ""},
        {{"get", good, "x"}, 1, "", "no block 'x' in '" + good + "'\n"},
        {{"get", good, "A", "x"}, 1, "", "no block 'A' 'x' in"},
        {{"get", faulty, "A"}, 1, "$begin 'A'\n\tx=1\n$end 'A'\n", error},
        {{}, 2, "", "Usage: quorel blocks"},
        {{"check"}, 2, "", "FILE is required\nUsage: quorel blocks check"},
        {{"tree", "--batch", good}, 2, "", "--batch takes no FILE"},
        {{"convert", good}, 2, "", "--output is required"},
        {{"convert", good, "--to", "xml", "--output", out}, 2, "", "xml"},
        {{"get", good}, 2, "", "NAME is required"},
        {{"tokens", "--case-mode", "4", good}, 2, "", "--case-mode"},
        {{"check", "/nowhere/a"}, 3, "", "'/nowhere/a': No such file"},
        {{"get", "/", "A"}, 3, "", "'/': Is a directory"},
        {{"get", "/dev/zero", "A"}, 3, "", "'/dev/zero': not a regular file"},
        {{"convert", good, "--output", "/nowhere/b"}, 3, "", "'/nowhere/b'"}};
    for (const auto& [arguments, code, wantedOut, err] : rows) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const Ran ran = Blocks(arguments, "no block");
        EXPECT_EQ(ran.code, code);
        EXPECT_EQ(ran.out, wantedOut);
        EXPECT_THAT(ran.err, HasSubstr(err));
        EXPECT_EQ(ran.err.empty(), err.empty());
    }
    EXPECT_FALSE(std::filesystem::exists(out)) << "written in spite of a fault";
}

TEST_F(BlocksFiles, ConvertKeepsTheTree) {
    const std::string binary = Path("binary"), text = Path("text");
    const std::string source =
        Write("source", Read(kSample) +
                            "$begin 'All' f(,1,,g(2,),) r[4: -0.1, 1e-320, 5000000000, 1e999]\n"
                            "'a b'='' '1'=\"\\\n\" 5=1 true=false k='\xf0\x9f\x98\x80' $end");
    EXPECT_EQ(Blocks({"convert", source, "--to", "binary", "--output", binary}).code, 0);
    EXPECT_EQ(Read(binary)[0], '\0');
    EXPECT_EQ(Blocks({"convert", binary, "--to", "text", "--output", text}).code, 0);
    const json tree = Tree(source), there = Tree(binary), back = Tree(text);
    EXPECT_EQ(tree["blocks"].size(), 3u);
    EXPECT_EQ(there, tree);
    EXPECT_EQ(back, tree);
    // In its own place, and no more changes.
    EXPECT_EQ(Blocks({"format", text, "--output", text}).code, 0);
    EXPECT_EQ(Blocks({"format", text}).out, Read(text));
}

TEST_F(BlocksFiles, IndexedFilesGiveTheirBlocksByPath) {
    const std::string instance =
        "$begin 'Instance'\n\tPart=Resistor\n\tName='R1'\n\tAt(x=120, y=40, Turned=false)\n"
        "$end 'Instance'\n";
    EXPECT_EQ(Blocks({"get", kSample, "schematic", "INSTANCE"}).out, instance);
    EXPECT_EQ(Blocks({"get", "-", "Schematic", "Instance"}, Read(kSample)).out, instance);
    for (const char* form : {"text", "binary"}) {
        for (const bool isAllLevels : {false, true}) {
            SCOPED_TRACE(std::string(form) + (isAllLevels ? " all" : " top"));
            const std::string file = Path("indexed");
            std::vector<std::string> index = {"index", kSample, "--to", form, "--output", file};
            if (isAllLevels)
                index.push_back("--all-levels");
            EXPECT_EQ(Blocks(index).code, 0);
            EXPECT_EQ(Blocks({"check", file}).err, "") << "the index fits";

            const json table = Tree(file)["blocks"].back();
            EXPECT_EQ(table["block"], "$index$");
            EXPECT_EQ(table["items"].size(), isAllLevels ? 5u : 2u);
            EXPECT_THAT(Blocks({"get", file, "library", "Capacitor"}).out, HasSubstr("Prefix=C\n"));
            EXPECT_EQ(Blocks({"get", file, "Library", "Inductor"}).code, 1);

            // Indexed once more: no second index.
            const std::string again = Path("again");
            index[1] = file;
            index[5] = again;
            EXPECT_EQ(Blocks(index).code, 0);
            EXPECT_EQ(Tree(again)["blocks"].size(), 4u);

            const Ran formatted = Blocks({"format", file});
            EXPECT_EQ(json::parse(Blocks({"tree", "-"}, formatted.out).out)["blocks"].size(), 2u);
            EXPECT_THAT(formatted.err, HasSubstr("block '$base_index$' dropped"));
            EXPECT_THAT(formatted.err, HasSubstr("block '$index$' dropped"));
        }
    }
}

TEST_F(BlocksFiles, GetSurvivesAnIndexThatLeadsAstray) {
    const std::string file = Path("indexed");
    Blocks({"index", kSample, "--output", file});
    const std::string whole = Read(file);
    const std::string entry = "\tSchematic(pos=";
    const std::size_t at = whole.rfind(entry) + entry.size();
    const std::string found = Blocks({"get", file, "Schematic"}).out;
    for (const char* pos : {"1", "999", "-1", "1e300", "nan", "9007199254740993", "'x'"}) {
        SCOPED_TRACE(pos);
        std::string bytes = whole;
        bytes.replace(at, bytes.find(',', at) - at, pos);
        Write("indexed", bytes);
        EXPECT_EQ(Blocks({"get", file, "Schematic"}).out, found) << "by reading all";
        const Ran checked = Blocks({"check", file});
        EXPECT_EQ(checked.code, 1);
        EXPECT_THAT(checked.err, HasSubstr("index of '" + file + "' doesn't fit"));
    }
    // The base index leads out of the file.
    std::string bytes = whole;
    bytes.replace(bytes.find("pos=") + 4, 12, "999999999999");
    Write("indexed", bytes);
    EXPECT_EQ(Blocks({"get", file, "Schematic"}).out, found);
}

TEST_F(BlocksFiles, AreReadUpToWhereTheyAreCutOff) {
    const std::string binary = Path("binary");
    Blocks({"convert", kSample, "--to", "binary", "--output", binary});
    for (const std::string& form : {Read(kSample), Read(binary)}) {
        std::string lines;
        for (std::size_t size = 0; size < form.size(); size += 7) {
            const std::vector<unsigned char> bytes(form.begin(), form.begin() + long(size));
            lines += json({{"bytes", bytes}}).dump() + "\n";
        }
        std::istringstream answers(Blocks({"tree", "--batch"}, lines).out);
        std::size_t blocks = 0, answered = 0;
        for (std::string line; std::getline(answers, line); ++answered) {
            const json answer = json::parse(line);
            EXPECT_GE(answer.at("blocks").size(), blocks) << "what was there goes on being read";
            blocks = answer["blocks"].size();
        }
        EXPECT_EQ(answered, (form.size() + 6) / 7);
        EXPECT_EQ(blocks, 2u);
    }
}

} // namespace
