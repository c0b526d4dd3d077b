/// Project: designs with their instances and scripts, as a project file holds them.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "astring.h"
#include "block_func.h"
#include "project_text.h"
#include "quorel_export.h"

/// Where an editor's views stand: its function of "View" functions, each with a "WindowPos" of nine
/// numbers or nothing in it.
class QUOREL_API ProjectPlacement {
public:
    using Window = std::array<int, 9>;

    ProjectPlacement() = default;
    /// Takes over a function as an editor writes it. A null pointer is no views.
    explicit ProjectPlacement(io::CBlock_ptr<io::CBlock_func> views) : m_Views(std::move(views)) {}

    /// Whether a function is such a placement and nothing else.
    static bool IsOne(const io::CBlock_func& views);

    /// As an editor reads it; null: no views.
    const io::CBlock_ptr<io::CBlock_func>& GetViews() const { return m_Views; }
    /// The numbers of each view that has them.
    std::vector<Window> GetWindows() const;

private:
    io::CBlock_ptr<io::CBlock_func> m_Views;
};

struct ProjectInstance {
    AString m_Name{};
    ProjectPlacement m_Placement{}; ///< its views of the design's netlist
    KeptItems m_Kept{};
};

struct ProjectScript {
    AString m_Name{};
    AString m_Language{};
    bool m_IsUsed = false;
    ProjectPlacement m_Placement{};
    ProjectText m_Text{};
    KeptItems m_Kept{};
};

/// A design; what it holds stays where it is in memory while others come and go.
struct ProjectDesign {
    AString m_Name{};
    ProjectText m_Netlist{};
    std::vector<std::unique_ptr<ProjectInstance>> m_Instances{};
    std::vector<std::unique_ptr<ProjectScript>> m_Scripts{};
    KeptItems m_Kept{};
};

struct Project {
    AString m_Name{};
    std::vector<std::unique_ptr<ProjectDesign>> m_Designs{};
    KeptItems m_Kept{};
    KeptItems m_KeptBehind{}; ///< what stood outside of the project's block
};
