/// What the desktop's tests share: a program without a screen, the module, files and answers.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "desktop_core.h"
#include "file_commands.h"
#include "open_documents.h"
#include "recovery_timer.h"

/// The one core of the process, since a module starts once.
DesktopCore& Core();

std::string ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const std::string& bytes);
/// Gives the last change of a file another time, as a later one has it.
void Touch(const std::string& path);
/// Types into a document as its driver does.
void Type(OpenDocument& document, const std::string& text);

/// Documents with their commands, a user who answers from a list, a folder of their own.
class DeskTest : public ::testing::Test {
protected:
    DeskTest();
    ~DeskTest() override;

    std::string PathOf(const std::string& name) const {
        return m_Folder.path().toStdString() + '/' + name;
    }
    /// Writes a file and opens it.
    OpenDocument& OpenBytes(const std::string& name, const std::string& bytes);

    QTemporaryDir m_Folder;
    std::deque<int> m_Answers;    ///< the user's, in order
    std::vector<QString> m_Asked; ///< texts of the questions
    QString m_SaveName;           ///< what is chosen to save as
    OpenDocuments m_Documents;
    RecoveryTimer m_Timer;
    FileCommands m_Files;
};
