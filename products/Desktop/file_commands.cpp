#include "file_commands.h"

#include <cerrno>
#include <filesystem>

#include <QDir>
#include <QFileInfo>

#include "desktop_core.h"
#include "notice_bar.h"
#include "qt_strings.h"
#include "recovery_timer.h"

namespace {

// Topics of notices: one of each at a time.
const QString kDiskTopic = QStringLiteral("DiskNotice");
const QString kFormTopic = QStringLiteral("FormNotice");
const QString kEndsTopic = QStringLiteral("LineEndsNotice");
const QString kRecoveredTopic = QStringLiteral("RecoveredNotice");

bool IsThere(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

QString Quoted(const QString& name) {
    return QStringLiteral("\u201C%1\u201D").arg(name);
}

} // namespace

FileCommands::FileCommands(DesktopCore& core, OpenDocuments& documents, RecoveryTimer& recovery,
                           Surroundings surroundings)
    : m_Core(core), m_Documents(documents), m_Recovery(recovery),
      m_Window(std::move(surroundings)) {}

void FileCommands::Fail(const QString& text, const sys::Status& status) {
    const QString reason = QString::fromStdString(status.reason);
    m_Window.m_Tell(text + QStringLiteral(" ") + reason, true);
    m_Window.m_Ask({Question::Kind::error, text, reason, {}});
}

/// Runs something later on a document that may have gone.
void FileCommands::WithDocument(const std::string& id,
                                const std::function<void(OpenDocument&)>& act) {
    for (OpenDocument* document : m_Documents.GetAll())
        if (document->GetId() == id)
            return act(*document);
}

OpenDocument* FileCommands::DocumentFor(EditorSort sort, const QString& title) {
    OpenDocument* const document = m_Documents.Create(sort, title);
    if (!document)
        Fail(QStringLiteral("The module makes no editor."), {});
    return document;
}

OpenDocument* FileCommands::New(EditorSort sort) {
    OpenDocument* const document = DocumentFor(sort, m_Documents.NewTitle());
    if (document)
        m_Documents.Show(*document);
    return document;
}

/// An untouched new text gives way to what is opened.
void FileCommands::DropPristine(const OpenDocument* but) {
    for (OpenDocument* document : m_Documents.GetAll())
        if (document != but && document->IsPristine())
            m_Documents.Remove(*document);
}

OpenDocument* FileCommands::Open(const FileTarget& file, bool mayBeNew) {
    const std::string& path = file.m_Path;
    if (m_Window.m_OpenOther && m_Window.m_OpenOther(path)) {
        if (const OpenDocument* shown = m_Documents.GetActive(); shown && shown->GetHome())
            DropPristine(shown);
        return nullptr;
    }
    OpenDocument* document = m_Documents.FindPath(path);
    if (!document) {
        const QString name = QFileInfo(FromPath(path)).fileName();
        document = DocumentFor(EditorSortOf(path), name);
        if (!document)
            return nullptr;
        const bool isNew = mayBeNew && !IsThere(path);
        if (isNew)
            document->GetFile().Adopt(path, {});
        const sys::Status status = isNew ? sys::Status{} : document->Load(path, true);
        if (!status) {
            m_Documents.Remove(*document);
            if (status.code == ECANCELED) // by the user, who knows
                return nullptr;
            Fail(QStringLiteral("The file %1 can't be opened.").arg(Quoted(name)), status);
            return nullptr;
        }
        DropPristine(document);
        m_Documents.Show(*document);
        ShowFormNotices(*document);
        m_Window.m_Used(FromPath(path));
    }
    m_Documents.Show(*document);
    if (file.m_Place.m_Row >= 0)
        document->GetEditor().m_Driver->SetCaret(file.m_Place);
    return document;
}

void FileCommands::AskAndOpen() {
    const OpenDocument* const active = m_Documents.GetActive();
    const std::string path = active ? active->GetFile().GetPath() : std::string();
    const QString folder =
        path.empty() ? QDir::currentPath() : QFileInfo(FromPath(path)).absolutePath();
    for (const QString& chosen : m_Window.m_AskOpen(folder))
        Open({ToPath(chosen)});
}

void FileCommands::ShowFormNotices(OpenDocument& document) {
    document.HideNotice(kFormTopic);
    document.HideNotice(kEndsTopic);
    const FileForm& form = document.GetFile().GetForm();
    const auto notice = [&](const QString& topic, const QString& text) {
        m_Window.m_Tell(document.GetTitle() + QStringLiteral(": ") + text, false);
        document.ShowNotice(new NoticeBar(NoticeBar::Kind::information, text), topic);
    };
    const bool isMixed = document.GetFile().HasMixedLineEnds();
    if (form.m_Encoding == FileEncoding::bytes)
        notice(kFormTopic,
               QStringLiteral("This file holds characters that Windows-1252 hasn't got. It is "
                              "shown byte for byte") +
                   (isMixed ? QStringLiteral(".")
                            : QStringLiteral("; all that you don't change is saved as it was.")));
    if (isMixed)
        notice(kEndsTopic, QStringLiteral("The lines of this file end in different ways. You will "
                                          "be asked which one to use when you save a change."));
}

sys::Status FileCommands::Load(OpenDocument& document, const std::string& path) {
    const auto caret = document.GetEditor().m_Inspector->GetCaret();
    sys::Status status = document.Load(path);
    if (!status)
        return status;
    m_Recovery.Forget(document);
    document.HideNotice(kDiskTopic);
    document.HideNotice(kRecoveredTopic);
    ShowFormNotices(document);
    if (caret)
        document.GetEditor().m_Driver->SetCaret(caret->m_Caret);
    return status;
}

bool FileCommands::Save(OpenDocument& document) {
    if (ITextHome* home = document.GetHome())
        return home->Save();
    const std::string path = document.GetFile().GetPath();
    if (path.empty())
        return SaveAs(document);
    return MayOverwrite(document) && SaveTo(document, path);
}

bool FileCommands::SaveAs(OpenDocument& document) {
    if (ITextHome* home = document.GetHome())
        return home->SaveAs();
    const std::string& own = document.GetFile().GetPath();
    const QString preset =
        own.empty() ? QDir::current().filePath(document.GetTitle()) : FromPath(own);
    const QString chosen = m_Window.m_AskSave(preset);
    if (chosen.isEmpty())
        return false;
    const std::string path = ToPath(chosen);
    if (const OpenDocument* other = m_Documents.FindPath(path); other && other != &document) {
        m_Window.m_Ask({Question::Kind::warning,
                        QStringLiteral("%1 is open in another window.").arg(Quoted(chosen)),
                        QStringLiteral("Close it there first, or choose another name."),
                        {}});
        return false;
    }
    return SaveTo(document, path);
}

bool FileCommands::SaveAll() {
    for (OpenDocument* document : m_Documents.GetAll())
        if (document->IsModified() && !Save(*document))
            return false;
    return true;
}

bool FileCommands::SaveTo(OpenDocument& document, const std::string& path) {
    const FileSession& file = document.GetFile();
    if (file.HasMixedLineEnds() && !file.KeepsBytes(document.IsModified()) &&
        !AskLineEnds(document))
        return false;
    return Write(document, path);
}

bool FileCommands::Write(OpenDocument& document, const std::string& path) {
    const sys::Status status = document.Save(path);
    if (status) {
        Saved(document);
        return true;
    }
    const QString reason = QString::fromStdString(status.reason);
    m_Window.m_Tell(reason, true);
    const int answer = m_Window.m_Ask(
        {Question::Kind::error,
         QStringLiteral("The text could not be saved."),
         reason + QStringLiteral("\n\nIt is still here. You can save it under another name."),
         {QStringLiteral("Save &As\u2026"), QStringLiteral("&Close")}});
    return answer == 0 && SaveAs(document);
}

void FileCommands::Saved(OpenDocument& document) {
    m_Recovery.Forget(document);
    for (const QString& topic : {kDiskTopic, kEndsTopic, kRecoveredTopic})
        document.HideNotice(topic);
    m_Window.m_Used(FromPath(document.GetFile().GetPath()));
}

bool FileCommands::AskLineEnds(OpenDocument& document) {
    constexpr LineEnds kChoices[] = {LineEnds::lf, LineEnds::crLf};
    const int answer = m_Window.m_Ask(
        {Question::Kind::question,
         QStringLiteral("The lines of %1 end in different ways.").arg(Quoted(document.GetTitle())),
         QStringLiteral("All lines of the saved file will end alike. Which way?"),
         {QStringLiteral("&LF (Unix)"), QStringLiteral("CR LF (&Windows)"),
          QStringLiteral("Cancel")}});
    if (answer >= static_cast<int>(std::size(kChoices)))
        return false;
    document.GetFile().SetLineEnds(kChoices[answer]);
    return true;
}

bool FileCommands::MayOverwrite(OpenDocument& document) {
    if (document.GetFile().CheckDisk() != FileSession::Disk::changed)
        return true;
    const int answer = m_Window.m_Ask(
        {Question::Kind::warning,
         QStringLiteral("Another program has changed %1.").arg(Quoted(document.GetTitle())),
         QStringLiteral("Saving replaces what that program wrote by the text in this window."),
         {QStringLiteral("&Overwrite"), QStringLiteral("Cancel")}});
    if (answer == 0)
        KeepText(document);
    return answer == 0;
}

/// The text is to replace what the disk holds now, even if nobody has edited it.
void FileCommands::KeepText(OpenDocument& document) {
    document.GetFile().AcceptDisk();
    document.MarkUnsaved();
}

void FileCommands::Revert(OpenDocument& document) {
    const std::string path = document.GetFile().GetPath();
    if (path.empty())
        return;
    if (document.IsModified() &&
        m_Window.m_Ask(
            {Question::Kind::warning,
             QStringLiteral("Go back to the saved text of %1?").arg(Quoted(document.GetTitle())),
             QStringLiteral("All changes since it was saved are lost."),
             {QStringLiteral("&Revert"), QStringLiteral("Cancel")}}) != 0)
        return;
    if (const sys::Status status = Load(document, path); !status)
        Fail(QStringLiteral("The file can't be read again. The text is as it was."), status);
}

bool FileCommands::MayClose(OpenDocument& document) {
    if (!document.IsModified() || document.GetHome())
        return true;
    m_Documents.Show(document);
    const int answer = m_Window.m_Ask(
        {Question::Kind::question,
         QStringLiteral("Save the changes of %1?").arg(Quoted(document.GetTitle())),
         QStringLiteral("Without saving they are lost."),
         {QStringLiteral("&Save"), QStringLiteral("&Don't Save"), QStringLiteral("Cancel")}});
    return answer == 0 ? Save(document) : answer == 1;
}

bool FileCommands::Close(OpenDocument& document) {
    if (!MayClose(document))
        return false;
    if (document.GetHome()) {
        document.CloseShell(document.GetShell());
        return true;
    }
    m_Recovery.Forget(document);
    m_Documents.Remove(document);
    return true;
}

bool FileCommands::CloseAll() {
    for (OpenDocument* document : m_Documents.GetAll())
        if (!MayClose(*document))
            return false;
    for (OpenDocument* document : m_Documents.GetAll()) {
        if (document->GetHome())
            continue;
        m_Recovery.Forget(*document);
        m_Documents.Remove(*document);
    }
    return true;
}

void FileCommands::CheckDisk(OpenDocument& document) {
    const FileSession::Disk disk = document.GetFile().CheckDisk();
    if (disk == FileSession::Disk::same || document.HasNotice(kDiskTopic))
        return;
    const std::string id = document.GetId();
    const bool isGone = disk == FileSession::Disk::gone;
    auto* bar = new NoticeBar(
        NoticeBar::Kind::warning,
        isGone ? QStringLiteral("The file has been removed or renamed. The text is still here.")
               : QStringLiteral("Another program has changed this file."));
    const auto accept = [this, id] { WithDocument(id, [](OpenDocument& it) { KeepText(it); }); };
    if (isGone) {
        bar->AddButton(QStringLiteral("&Save"),
                       [this, id] { WithDocument(id, [this](auto& it) { Save(it); }); });
        document.MarkUnsaved();
    } else {
        bar->AddButton(QStringLiteral("&Reload"),
                       [this, id] { WithDocument(id, [this](auto& it) { Revert(it); }); });
    }
    bar->AddButton(QStringLiteral("&Keep This Text"), accept);
    document.ShowNotice(bar, kDiskTopic);
    m_Window.m_Tell(document.GetTitle() + (isGone ? QStringLiteral(": the file is gone")
                                                  : QStringLiteral(": changed on disk")),
                    false);
}

void FileCommands::OfferRecovered() {
    const std::vector<RecoveredText> texts = m_Core.m_Recovery.TakeOrphans();
    if (texts.empty())
        return;
    QStringList names;
    for (const RecoveredText& text : texts)
        names << QString::fromStdString(text.m_Path.empty() ? text.m_Title : text.m_Path);
    const int answer = m_Window.m_Ask(
        {Question::Kind::warning,
         QStringLiteral("Quorel ended before these texts were saved. Recover them?"),
         names.join(QLatin1Char('\n')),
         {QStringLiteral("&Recover"), QStringLiteral("&Discard"), QStringLiteral("Ask &Later")}});
    for (const RecoveredText& text : texts) {
        if (answer == 0)
            Recover(text);
        else if (answer == 1)
            m_Core.m_Recovery.Forget(text.m_Id);
    }
}

void FileCommands::Recover(const RecoveredText& text) {
    // A file that a start has opened again already gets its lost changes.
    OpenDocument* document = text.m_Path.empty() ? nullptr : m_Documents.FindPath(text.m_Path);
    if (!document || document->IsModified())
        document =
            DocumentFor(EditorSortNamed(text.m_Editor), QString::fromStdString(text.m_Title));
    if (!document)
        return;
    document->SetId(text.m_Id);
    document->GetFile().Adopt(text.m_Path, text.m_Form, text.m_KnownFile);
    document->GetEditor().m_Driver->LoadArchive(text.m_Archive);
    document->GetEditor().m_Driver->SetModified(true);
    document->m_KeptChange = document->GetEditor().m_Inspector->GetChangeCount();
    m_Documents.Show(*document);
    document->GetEditor().m_Driver->SetCaret(text.m_Caret);
    auto* bar = new NoticeBar(NoticeBar::Kind::information,
                              QStringLiteral("Recovered text. It is not saved yet."));
    bar->AddButton(QStringLiteral("&Save"), [this, id = text.m_Id] {
        WithDocument(id, [this](OpenDocument& it) { Save(it); });
    });
    document->ShowNotice(bar, kRecoveredTopic);
    DropPristine(document);
}
