/// DocumentInstance: the design instance to which the views of one document belong.
#pragma once

#include <functional>

#include "idesign.h"

class DocumentInstance : public IDesignInstance, public IViewKey {
public:
    explicit DocumentInstance(AString name) : m_Name(std::move(name)) {}
    virtual ~DocumentInstance() = default;

    void SetName(const AString& name) { m_Name = name; }

    void GetInstanceName(AString& name) override { name = m_Name; }
    IViewKey* GetViewKey() override { return this; }
    void EditorActivated(IEditor*) override {}
    void EditorDeactivated(IEditor*) override {}
    ICommandListener* GetCommandListener() override { return nullptr; }
    IDesignInstance* GetInstance() override { return this; }

private:
    AString m_Name;
};
