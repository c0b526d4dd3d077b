#include "win_app.h"

#include "doc_template.h"

CWinApp::CWinApp(AString name) : m_Name(std::move(name)) {}

CWinApp::~CWinApp() {
    CloseTemplates();
}

void CWinApp::AddDocTemplate(std::unique_ptr<CDocTemplate> docTemplate) {
    m_Templates.push_back(std::move(docTemplate));
}

void CWinApp::CloseTemplates() {
    while (!m_Templates.empty())
        m_Templates.pop_back();
}
