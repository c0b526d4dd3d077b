/// What the subcommands of `quorel blocks` have in common, and their list.
#pragma once

#include <string>

#include "command.h"

/// FILE, or --batch in its place.
struct BlocksInputOptions {
    const CLI::App* m_Command = nullptr;
    std::string m_File;
    bool m_Batch = false;

    /// @param meaning what FILE is
    void AddTo(CLI::App& command, bool hasBatch);
    /// Whether it is a batch; UsageError unless there is either that or FILE.
    bool IsBatch() const;
};

/// Adds --output, which names standard output by "-".
CLI::Option& AddOutputOption(CLI::App& command, std::string& output);

/// Each adds the subcommand of its name.
void AddBlocksCheck(CLI::App& parent, Choice& choice);
void AddBlocksFormat(CLI::App& parent, Choice& choice);
void AddBlocksTree(CLI::App& parent, Choice& choice);
void AddBlocksTokens(CLI::App& parent, Choice& choice);
void AddBlocksConvert(CLI::App& parent, Choice& choice);
void AddBlocksIndex(CLI::App& parent, Choice& choice);
void AddBlocksGet(CLI::App& parent, Choice& choice);
