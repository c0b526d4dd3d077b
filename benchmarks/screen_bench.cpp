// The desktop at work on netlists, in its own window: what its user waits for.

#include "screen_work.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QLineEdit>
#include <QTimer>

#include "bench_desk.h"
#include "resource_ids.h"

namespace {

using namespace screen;
const std::string kUs = "quorel";
const std::string kAim = "the aim"; // a bound that doesn't come from a peer

/// Controls of a dialog by number, and what the user types into each.
using Texts = std::vector<std::pair<unsigned, const char*>>;

/// Opens a dialog by its command, fills it in and presses a button.
/// @param press is given the button and presses it
template <class Press>
void InDialog(BenchDesk& desk, unsigned command, const Texts& texts, unsigned button, Press press) {
    QTimer::singleShot(0, [&] {
        QWidget* const dialog = QApplication::activeModalWidget();
        const auto control = [dialog](unsigned id) {
            return dialog->findChild<QWidget*>(QString::number(id));
        };
        for (const auto& [id, text] : texts)
            dynamic_cast<QLineEdit&>(*control(id)).setText(QString::fromLatin1(text));
        dynamic_cast<QAbstractButton&>(*control(kControlMatchCase)).setChecked(true);
        Application::Settle();
        press(dynamic_cast<QAbstractButton&>(*control(button)));
        dialog->close();
    });
    desk.GetDriver().RunCommand(command);
    Application::Settle();
}

void MeasureOpening(BenchDesk& desk) {
    const std::string path = MillionFile();
    const double time =
        App().UntilShown([&] { return &desk.GetClient(); }, [&] { desk.Open(path); });
    bench::Row(kOpen, kUs, "ms", time / 1e6);
    bench::Row(kOpen, kAim, "ms", 1000);
    Application::Settle();
    desk.GetClient().setFocus();
}

void MeasureKeys(BenchDesk& desk) {
    MeasurePages(kUs, desk.GetClient(), desk.GetClient());
    desk.GetDriver().SetCaret({kMiddle, 0});
    Application::Settle();
    MeasureTyping(kUs, desk.GetClient(), desk.GetClient());
    bench::Row(kTypeWorst, kAim, "us", 2000);
}

/// Presses "Find Next". @return the nanoseconds until the editor says that there is none
double TimeToNotFound(BenchDesk& desk, QAbstractButton& button) {
    double told = 0;
    const auto restore = std::exchange(desk.GetPrompt().m_OnShown,
                                       [&](const HostPrompt::Shown&) { told = bench::Now(); });
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); }); // what it says it in
    const double begin = bench::Now();
    button.click();
    desk.GetPrompt().m_OnShown = restore;
    return told - begin;
}

void MeasureFinding(BenchDesk& desk) {
    InDialog(desk, kCommandFind, {{kControlFindWhat, kAbsent}}, kIdOk,
             [&](QAbstractButton& button) {
                 std::vector<double> times;
                 for (int i = 0; i < 3; ++i)
                     times.push_back(TimeToNotFound(desk, button));
                 bench::Row(kFindNone, kUs, "ms", bench::Median(times) / 1e6);
             });
    std::string text;
    desk.GetInspector().GetArchive(text);
    const double time = bench::TimeOf(
        3, [&] { bench::Keep(memmem(text.data(), text.size(), kAbsent, std::strlen(kAbsent))); });
    bench::Row(kFindNone, "memmem", "ms", time / 1e6);
}

void MeasureClipboard(BenchDesk& desk) {
    QWidget& client = desk.GetClient();
    IEditorDriver& driver = desk.GetDriver();
    MeasureShown(kCopyAll, kUs, client, [&] {
        driver.RunCommand(kCommandSelectAll);
        driver.RunCommand(kCommandCopy);
    });
    QGuiApplication::clipboard()->setText(QString::fromStdString(PastedText()));
    Press(client, Qt::Key_Escape);
    driver.SetCaret({kMiddle, 0});
    Application::Settle();
    MeasureShown(kPaste, kUs, client, [&] { driver.RunCommand(kCommandPaste); });
    MeasureShown(kPasteUndo, kUs, client, [&] { driver.UndoEdit(); });
    MeasureShown(kPasteRedo, kUs, client, [&] { driver.RedoEdit(); });
}

/// Replaces all hits of a text of so many lines. @return the milliseconds
double ReplaceAll(BenchDesk& desk, int lines) {
    const std::string path = desk.PathOf(std::to_string(lines) + ".cir");
    std::ofstream(path, std::ios::binary) << TextOfHits(static_cast<std::size_t>(lines));
    desk.Open(path);
    Application::Settle();
    double time = 0;
    InDialog(desk, kCommandReplace, {{kControlFindWhat, kHit}, {kControlReplaceWith, kReplacement}},
             kControlReplaceAll, [&](QAbstractButton& button) {
                 time = App().UntilShown(&desk.GetClient(), [&] { button.click(); });
             });
    const std::string_view last = desk.GetInspector().GetLineText(lines - 1);
    if (!last.ends_with(kReplacement))
        std::_Exit(4); // the figure would be of something else
    return time / 1e6;
}

/// Undoes all actions, of which each replacement makes its own, at one go.
/// @return the milliseconds of all
double UndoAll(BenchDesk& desk) {
    const double time = App().UntilShown(
        &desk.GetClient(), [&] { desk.GetDriver().UndoEdit(desk.GetInspector().GetUndoCount()); });
    if (desk.GetInspector().GetUndoCount() != 0 ||
        !desk.GetInspector().GetLineText(0).ends_with(kHit))
        std::_Exit(4); // the figure would be of something else
    return time / 1e6;
}

void MeasureReplacing(BenchDesk& desk) {
    constexpr int kMany = 1'000'000;
    constexpr int kFew = kMany / 10;
    bench::Row(kReplaceAll, "ten times 100,000 hits", "ms", 10 * ReplaceAll(desk, kFew));
    bench::Row(kReplaceAll, kUs, "ms", ReplaceAll(desk, kMany));
    bench::Row(kReplaceUndo, kUs, "ms", UndoAll(desk));
    for (const std::string& work : {kReplaceAll, kReplaceUndo})
        bench::Row(work, kAim, "ms", 2000);
}

} // namespace

int main(int argc, char** argv) {
    Application application(argc, argv);
    Prepare();
    BenchDesk desk("NumberOfUndos=10000000\n");
    MeasureOpening(desk);
    MeasureKeys(desk);
    MeasureFinding(desk);
    MeasureClipboard(desk);
    MeasureReplacing(desk);
    End();
}
