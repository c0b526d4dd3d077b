/// Reading of the syntax configuration and its description files.
#pragma once

#include "quorel_export.h"
#include "syntax_dscr.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// An expression for which the reader dropped a range or token; each is named once. A group or list
/// whose entries were too many is named likewise by the first key that was left out. Where faults
/// are too many to be named one by one, a last item tells how many more there are.
struct DroppedExpression {
    std::string section;    ///< of the description file; a list's, of the configuration
    std::string key;        ///< where the expression stands, the default's key if inherited
    std::string expression; ///< as it stands there
    std::string reason;     ///< the expression's error text, or "empty expression"
};

/// What the reader made of one description.
struct DescriptionReport {
    std::string section; ///< of the configuration file
    std::string file;    ///< path of the description file as it was opened, empty if none is named
    bool unreadable = false;
    std::vector<DroppedExpression> dropped; ///< in the order of reading
};

using SyntaxDscrs = std::vector<std::unique_ptr<CSyntaxDscr>>;

/// Reads a configuration: one description for each "Dscr%d" key that isn't empty, in order.
///
/// What can't be read reads as empty; a range or token with an expression that is empty or doesn't
/// compile is dropped, and indices count only what is kept. Numbers of entries that the files don't
/// hold cost nothing, and sections that are named many times cost little more than the files: the
/// entries of a configuration are bounded all together. Paths are UTF-8.
///
/// @param configPath what is opened, which may be a copy
/// @param sourcePath the configuration file itself, whose directory description files are taken
///        from
/// @param reports null, or what gets a report for each description
QUOREL_API SyntaxDscrs ReadSyntaxDscrs(const std::string& configPath, const std::string& sourcePath,
                                       std::vector<DescriptionReport>* reports = nullptr);
