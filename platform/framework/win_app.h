/// CWinApp: a module's application object.
#pragma once

#include <memory>
#include <vector>

#include "astring.h"
#include "cmd_target.h"

class CDocTemplate;

/// Owns the module's document templates and knows its registry root. One static instance a
/// module; construction and destruction are its start and its end.
class QUOREL_API CWinApp : public CCmdTarget {
public:
    explicit CWinApp(AString name);
    /// Destroys the templates, the last one first, and with them the documents in their lists.
    ~CWinApp() override;

    const AString& GetAppName() const { return m_Name; }
    /// The root of the module's stored settings.
    void SetRegistryKey(const AString& key) { m_RegistryKey = key; }
    const AString& GetRegistryKey() const { return m_RegistryKey; }

    /// Registers a template, which the application owns from then on.
    void AddDocTemplate(std::unique_ptr<CDocTemplate> docTemplate);
    const std::vector<std::unique_ptr<CDocTemplate>>& GetDocTemplates() const {
        return m_Templates;
    }
    /// Destroys the templates as the destructor does; they may be registered anew afterwards.
    void CloseTemplates();

private:
    AString m_Name;
    AString m_RegistryKey;
    std::vector<std::unique_ptr<CDocTemplate>> m_Templates;
};
