/// HostInstance: one use of a design in a host, and the key that outlives it.
#pragma once

#include <deque>
#include <utility>

#include "astring.h"
#include "idesign.h"
#include "quorel_export.h"

/// Gives its instance until that ends, then null.
class QUOREL_API HostViewKey : public IViewKey {
public:
    explicit HostViewKey(IDesignInstance& instance) : m_Instance(&instance) {}
    HostViewKey(const HostViewKey&) = delete;
    HostViewKey& operator=(const HostViewKey&) = delete;
    virtual ~HostViewKey();

    IDesignInstance* GetInstance() override { return m_Instance; }
    void InstanceEnds() { m_Instance = nullptr; }

private:
    IDesignInstance* m_Instance;
};

/// The keys of all instances of a design there have been. They don't move.
using HostViewKeys = std::deque<HostViewKey>;

/// An instance with a name that nobody listens to.
class QUOREL_API HostInstance : public IDesignInstance {
public:
    /// @param keys where this instance's key stays: they outlive every view and command of it
    HostInstance(AString name, HostViewKeys& keys)
        : m_Name(std::move(name)), m_Key(keys.emplace_back(*this)) {}
    HostInstance(const HostInstance&) = delete;
    HostInstance& operator=(const HostInstance&) = delete;
    virtual ~HostInstance();

    void SetName(const AString& name) { m_Name = name; }

    void GetInstanceName(AString& name) override { name = m_Name; }
    HostViewKey* GetViewKey() override { return &m_Key; }
    void EditorActivated(IEditor*) override {}
    void EditorDeactivated(IEditor*) override {}
    ICommandListener* GetCommandListener() override { return nullptr; }

private:
    AString m_Name;
    HostViewKey& m_Key;
};
