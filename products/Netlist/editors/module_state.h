/// ModuleState: what the module's entries share: lock count, factory and class object.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>

class CNetlistFactory;
class NetlistClassObject;

/// One static instance, from the module's load to its unload.
class ModuleState {
public:
    ModuleState();
    ModuleState(const ModuleState&) = delete;
    ModuleState& operator=(const ModuleState&) = delete;
    /// Destroys a factory that nobody holds; one that is still held outlives the module's work.
    ~ModuleState();

    static ModuleState& Get();

    /// @name The module's locks, which keep it loaded
    /// @{
    void Lock() { ++m_Locks; }
    void Unlock() { --m_Locks; }
    bool IsLocked() const { return m_Locks > 0; }
    /// @}

    /// The single factory, made and counted as one lock when there is none. It may have no
    /// reference yet. Throws std::bad_alloc.
    CNetlistFactory& GetFactory();
    /// The factory is being destroyed: a later GetFactory makes another one.
    void FactoryEnds();

    /// The class object, made at the first call. Throws std::bad_alloc.
    NetlistClassObject& GetClassObject();

private:
    std::atomic<long> m_Locks = 0;
    std::mutex m_ObjectLock;
    std::unique_ptr<NetlistClassObject> m_ClassObject;
    CNetlistFactory* m_Factory = nullptr; ///< deletes itself with its last reference
};
