/// The tree of block_text.h in the forms of other libraries.
#pragma once

#include <cstdlib>
#include <string>

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include "block.h"
#include "block_func.h"
#include "block_tree.pb.h"
#include "block_value.h"
#include "block_vec.h"

namespace work {

/// A tree of blocks as a document of each kind. Numbers keep the text that they were written as
/// where a form is text.
class BlockPeers {
public:
    explicit BlockPeers(const io::CBlock& root) {
        mJson = "{" + Quoted(Name(root)) + ": ";
        AddJson(root, 1);
        mJson += "}\n";
        AddXml(root, 0);
        AddYaml(root, 0);
        AddProto(root, mProto);
    }

    const std::string& GetJson() const { return mJson; }
    const std::string& GetXml() const { return mXml; }
    const std::string& GetYaml() const { return mYaml; }
    const peers::Block& GetProto() const { return mProto; }

private:
    static std::string Name(const io::CBlock_item& item) {
        AString name;
        item.GetName(name);
        return name.ToCString();
    }
    static std::string Text(const io::CToken& token) { return token.GetText().ToCString(); }
    static const io::CToken& Value(const io::CBlock_item& item) {
        return static_cast<const io::CBlock_value&>(item).GetValue();
    }
    static std::string Quoted(const std::string& text) { return '"' + text + '"'; }
    static std::string JsonScalar(const io::CToken& token) {
        return token.IsNumber() ? Text(token) : Quoted(Text(token));
    }
    template <class Visit>
    static void ForArgs(const io::CBlock_item& func, Visit visit) {
        const auto& args = static_cast<const io::CBlock_func&>(func);
        for (unsigned i = 0; i < args.GetSize(); ++i)
            visit(*args.GetArg(i), i == 0);
    }

    // A block is an object, a function an object, a vector an array; "_0" is an argument's name.

    void AddJson(const io::CBlock& block, std::size_t depth) {
        mJson += '{';
        const char* separator = "\n";
        for (const io::CBlockItemPtr& item : block) {
            mJson += separator + std::string(depth, '\t') + Quoted(Name(*item)) + ": ";
            separator = ",\n";
            AddJsonItem(*item, depth + 1);
        }
        mJson += "\n" + std::string(depth - 1, '\t') + "}";
    }
    void AddJsonItem(const io::CBlock_item& item, std::size_t depth) {
        if (item.IsBlock()) {
            AddJson(static_cast<const io::CBlock&>(item), depth);
        } else if (item.IsFunc()) {
            ForArgs(item, [&](const io::CBlock_item& arg, bool isFirst) {
                mJson += (isFirst ? "{" : ", ") + Quoted(arg.IsNamed() ? Name(arg) : "_0") + ": " +
                         JsonScalar(Value(arg));
            });
            mJson += '}';
        } else if (item.IsVec()) {
            const auto& vec = static_cast<const io::CBlock_vec&>(item);
            for (const io::CToken& element : vec)
                mJson += (&element == vec.begin() ? "[" : ", ") + JsonScalar(element);
            mJson += ']';
        } else {
            mJson += JsonScalar(Value(item));
        }
    }

    void AddXml(const io::CBlock& block, std::size_t depth) {
        const std::string indent(depth, '\t');
        mXml += indent + "<block name=" + Quoted(Name(block)) + ">\n";
        for (const io::CBlockItemPtr& item : block) {
            if (item->IsBlock()) {
                AddXml(static_cast<const io::CBlock&>(*item), depth + 1);
                continue;
            }
            mXml += indent + '\t';
            AddXmlLeaf(*item);
            mXml += '\n';
        }
        mXml += indent + "</block>\n";
    }
    void AddXmlLeaf(const io::CBlock_item& item) {
        const std::string name = " name=" + Quoted(item.IsNamed() ? Name(item) : "_0");
        if (item.IsFunc()) {
            mXml += "<f" + name + ">";
            ForArgs(item, [&](const io::CBlock_item& arg, bool) { AddXmlLeaf(arg); });
            mXml += "</f>";
        } else if (item.IsVec()) {
            mXml += "<v" + name + ">";
            for (const io::CToken& element : static_cast<const io::CBlock_vec&>(item))
                mXml += "<i>" + Text(element) + "</i>";
            mXml += "</v>";
        } else if (Value(item).IsNumber()) {
            mXml += "<n" + name + " v=" + Quoted(Text(Value(item))) + "/>";
        } else {
            mXml += "<s" + name + ">" + Text(Value(item)) + "</s>";
        }
    }

    static std::string YamlKey(const std::string& name) { return name == "y" ? "'y'" : name; }
    static std::string YamlScalar(const io::CToken& token) {
        return token.IsNumber() ? Text(token) : "'" + Text(token) + "'";
    }
    void AddYaml(const io::CBlock& block, std::size_t depth) {
        mYaml += std::string(2 * depth, ' ') + YamlKey(Name(block)) + ":\n";
        for (const io::CBlockItemPtr& item : block) {
            if (item->IsBlock()) {
                AddYaml(static_cast<const io::CBlock&>(*item), depth + 1);
                continue;
            }
            mYaml += std::string(2 * depth + 2, ' ') + YamlKey(Name(*item)) + ": ";
            AddYamlLeaf(*item);
            mYaml += '\n';
        }
    }
    void AddYamlLeaf(const io::CBlock_item& item) {
        if (item.IsFunc()) {
            ForArgs(item, [&](const io::CBlock_item& arg, bool isFirst) {
                mYaml += (isFirst ? "{" : ", ") + (arg.IsNamed() ? Name(arg) : "_0") + ": " +
                         YamlScalar(Value(arg));
            });
            mYaml += '}';
        } else if (item.IsVec()) {
            const auto& vec = static_cast<const io::CBlock_vec&>(item);
            for (const io::CToken& element : vec)
                mYaml += (&element == vec.begin() ? "[" : ", ") + YamlScalar(element);
            mYaml += ']';
        } else {
            mYaml += YamlScalar(Value(item));
        }
    }

    static void AddProto(const io::CBlock& block, peers::Block& proto) {
        proto.set_name(Name(block));
        for (const io::CBlockItemPtr& item : block) {
            if (item->IsBlock())
                AddProto(static_cast<const io::CBlock&>(*item), *proto.add_blocks());
            else
                AddProtoLeaf(*item, *proto.add_items());
        }
    }
    static void AddProtoLeaf(const io::CBlock_item& item, peers::Item& proto) {
        proto.set_name(Name(item));
        if (item.IsFunc()) {
            ForArgs(item, [&](const io::CBlock_item& arg, bool) {
                peers::Arg& target = *proto.mutable_f()->add_args();
                if (arg.IsNamed())
                    target.set_name(Name(arg));
                if (Value(arg).IsNumber())
                    target.mutable_value()->set_n(Value(arg).GetNumber());
                else
                    target.mutable_value()->set_s(Text(Value(arg)));
            });
        } else if (item.IsVec()) {
            for (const io::CToken& element : static_cast<const io::CBlock_vec&>(item))
                proto.mutable_v()->add_v(element.GetNumber());
        } else if (Value(item).IsNumber()) {
            proto.set_n(Value(item).GetNumber());
        } else {
            proto.set_s(Text(Value(item)));
        }
    }

    std::string mJson, mXml, mYaml;
    peers::Block mProto;
};

} // namespace work
