/// The syntax configuration that a command line names, and the choice of a description for a file.
#pragma once

#include <string>
#include <vector>

#include "command.h"
#include "syntax_config.h"

/// The options --config and --syntax as they were given.
struct SyntaxOptions {
    std::string m_Config; ///< a file, "none", or empty: the one that came with the system
    std::string m_Syntax; ///< a name, an index, or empty: by the file's extension
};
void AddConfigOption(CLI::App& command, SyntaxOptions& options);
void AddSyntaxOption(CLI::App& command, SyntaxOptions& options);

/// A configuration as it was read.
struct SyntaxConfig {
    std::string m_Path; ///< as it was given; empty for "none"
    SyntaxDscrs m_Dscrs;
    std::vector<DescriptionReport> m_Reports; ///< one for each of m_Dscrs
};

/// The configuration that came with the system; ExitCode::file without it.
std::string GetDefaultConfig();

/// Reads a configuration, the one installed for an empty path; ExitCode::file when it can't be
/// read. Description files that can't are in the reports; those of standard input ("-") are looked
/// for in the current folder.
SyntaxConfig ReadSyntaxConfig(const std::string& given);
/// The same for --config, where "none" gives no descriptions.
SyntaxConfig LoadSyntaxConfig(const std::string& given);

/// The index of the description for a file. Named by a kind of text, or by nothing and for an
/// extension that no description has: that which an editor of this kind, or of netlists, takes; -1,
/// plain text, where it takes none. Named by an index that isn't there: ExitCode::no.
int ChooseSyntax(const SyntaxConfig& config, const std::string& syntax, const std::string& file);
