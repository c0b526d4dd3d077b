#include "desk_stage.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <QApplication>

namespace {

std::unique_ptr<QTemporaryDir> sPlaces;
std::unique_ptr<QApplication> sApplication;
std::unique_ptr<DesktopCore> sCore;

/// Ends the program behind the last test, once it was begun.
class Ending : public ::testing::Environment {
public:
    void TearDown() override {
        sCore.reset();
        sApplication.reset();
        sPlaces.reset();
    }
};
const auto* const kEnding = ::testing::AddGlobalTestEnvironment(new Ending);

} // namespace

DesktopCore& Core() {
    static int count = 1;
    static char name[] = "test";
    static char* values[] = {name, nullptr};
    if (!sCore) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QUOREL_DATA_DIR", QUOREL_SOURCE_DIR);
        sPlaces = std::make_unique<QTemporaryDir>();
        sApplication = std::make_unique<QApplication>(count, values);
        sCore = std::make_unique<DesktopCore>();
        const std::string folder = sPlaces->path().toStdString();
        const sys::Status status = sCore->Start({.m_Options = folder + "/options.ini",
                                                 .m_Recovery = folder + "/recovery",
                                                 .m_Module = QUOREL_BIN_DIR "/Netlist.so"});
        if (!status)
            throw std::runtime_error(status.reason);
    }
    return *sCore;
}

std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

void Touch(const std::string& path) {
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) +
                                               std::chrono::seconds(5));
}

void Type(OpenDocument& document, const std::string& text) {
    document.GetEditor().m_Driver->InsertString(0, 0, text, true, true);
    document.GetEditor().m_Driver->NotifyEdited(0);
}

DeskTest::DeskTest()
    : m_Documents(Core()),
      m_Timer(
          Core().m_Recovery, [this] { return m_Documents.GetAll(); }, [](const auto&) {}),
      m_Files(Core(), m_Documents, m_Timer,
              {.m_Ask =
                   [this](const Question& question) {
                       m_Asked.push_back(question.m_Text);
                       if (question.m_Buttons.isEmpty())
                           return 0;
                       if (m_Answers.empty()) {
                           ADD_FAILURE() << "asked: " << question.m_Text.toStdString();
                           return static_cast<int>(question.m_Buttons.size()) - 1;
                       }
                       const int answer = m_Answers.front();
                       m_Answers.pop_front();
                       return answer;
                   },
               .m_AskOpen = [](const QString&) { return QStringList(); },
               .m_AskSave = [this](const QString&) { return m_SaveName; },
               .m_Tell = [](const QString&, bool) {},
               .m_Used = [](const QString&) {}}) {}

DeskTest::~DeskTest() {
    for (OpenDocument* document : m_Documents.GetAll())
        m_Timer.Forget(*document);
}

OpenDocument& DeskTest::OpenBytes(const std::string& name, const std::string& bytes) {
    WriteBytes(PathOf(name), bytes);
    OpenDocument* const document = m_Files.Open({PathOf(name)});
    if (!document)
        throw std::runtime_error("not opened: " + name);
    return *document;
}
