/// The names of the work of editors on the screen, and what their programs share in doing it: a
/// user who presses keys, and a watch for the moment at which the screen shows what came of it.
#pragma once

#include "peer_bench.h"

#include <QApplication>
#include <QFont>
#include <QKeyEvent>
#include <QPointer>
#include <QTemporaryDir>
#include <QWidget>
#include <cstring>

namespace screen {

inline const std::string kOpen = "screen: open 1M lines to the first painted page";
inline const std::string kTypeMedian = "screen: a typed character in 1M lines to its row: median";
inline const std::string kTypeWorst = "screen: a typed character in 1M lines to its row: 99th";
inline const std::string kPages = "screen: page down held in 1M lines: a page";
inline const std::string kFindNone = "screen: find a text that isn't in 1M lines, with case";
inline const std::string kReplaceAll = "screen: replace all of 1M hits";
inline const std::string kReplaceUndo = "screen: undo of replacing 1M hits";
inline const std::string kCopyAll = "screen: select all of 1M lines and copy";
inline const std::string kPaste = "screen: paste of 100,000 lines in the middle of 1M";
inline const std::string kPasteUndo = "screen: undo of pasting 100,000 lines";
inline const std::string kPasteRedo = "screen: redo of pasting 100,000 lines";

inline constexpr int kMiddle = 500'000;
inline constexpr int kPastedLines = 100'000;
inline constexpr const char* kAbsent = "Qxnowhere";
inline constexpr const char* kHit = "zq9hit";
inline constexpr const char* kReplacement = "replaced";

/// A program that knows when a widget has been painted and its window's picture brought up to date.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        const QEvent::Type type = event->type();
        const bool isPaint = type == QEvent::Paint && receiver == m_Client;
        const bool done = QApplication::notify(receiver, event);
        if (isPaint)
            m_Painted = bench::Now();
        else if ((type == QEvent::UpdateRequest || type == QEvent::Expose) && m_Painted != 0)
            m_Shown = bench::Now();
        return done;
    }

    /// Does something and waits until the client's picture is on the screen.
    /// @param client of the widget then; asked when the act is done
    /// @return the nanoseconds from the beginning to that moment
    template <class Client, class Act>
    double UntilShown(Client client, Act act) {
        constexpr double kPatience = 60e9;
        m_Client = nullptr;
        m_Painted = m_Shown = 0;
        const double begin = bench::Now();
        act();
        m_Client = client();
        while (m_Shown == 0) {
            processEvents();
            if (bench::Now() - begin > kPatience) {
                std::fputs("nothing is painted\n", stderr);
                std::_Exit(3);
            }
        }
        return m_Shown - begin;
    }
    template <class Act>
    double UntilShown(QWidget* client, Act act) {
        return UntilShown([client] { return client; }, act);
    }

    /// Lets everything that waits happen.
    static void Settle() {
        for (int i = 0; i < 5; ++i)
            processEvents();
    }

private:
    QPointer<QObject> m_Client;
    double m_Painted = 0;
    double m_Shown = 0;
};

inline Application& App() {
    return static_cast<Application&>(*qApp);
}

/// What all programs set before anything is shown: a caret that stays, so that no blinking counts
/// as an answer.
inline void Prepare() {
    QApplication::setCursorFlashTime(0);
}

/// The font that the desktop's text has by default.
inline QFont TextFont() {
    QFont font(QStringLiteral("Courier New"));
    font.setPixelSize(12);
    return font;
}

/// Makes a window so large that its client has this size, the same for all editors.
inline void FitClient(QWidget& window, const QWidget& client) {
    constexpr QSize kClient{960, 600};
    for (int i = 0; i < 3; ++i) {
        window.resize(window.size() + kClient - client.size());
        Application::Settle();
    }
    if (client.size() != kClient)
        std::fputs("the editor has a size of its own\n", stderr);
}

inline void Press(QWidget& target, int key, const char* text = "", bool again = false) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString::fromLatin1(text), again);
    QApplication::sendEvent(&target, &press);
}
inline void Release(QWidget& target, int key) {
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(&target, &release);
}

/// Types characters into rows from the caret's on, each timed until it is seen.
/// @param keys gets the keys @param client is painted
inline void MeasureTyping(const std::string& who, QWidget& keys, QWidget& client, int rows = 30) {
    constexpr int kCharacters = 40;
    std::vector<double> times;
    for (int row = 0; row < rows; ++row) {
        for (int i = 0; i < kCharacters; ++i) {
            times.push_back(
                App().UntilShown(&client, [&] { Press(keys, Qt::Key_X, i % 8 ? "x" : " "); }));
            Release(keys, Qt::Key_X);
            Application::Settle();
        }
        Press(keys, Qt::Key_Home);
        Press(keys, Qt::Key_Down);
        Application::Settle();
    }
    bench::Row(kTypeMedian, who, "us", bench::Median(times) / 1e3);
    bench::Row(kTypeWorst, who, "us", bench::Quantile(times, 0.99) / 1e3);
}

/// Holds page down from the caret on, and sees every page.
inline void MeasurePages(const std::string& who, QWidget& keys, QWidget& client, int pages = 1000) {
    const double begin = bench::Now();
    for (int i = 0; i < pages; ++i)
        App().UntilShown(&client, [&] { Press(keys, Qt::Key_PageDown, "", i > 0); });
    bench::Row(kPages, who, "ms", (bench::Now() - begin) / 1e6 / pages);
    Release(keys, Qt::Key_PageDown);
    Application::Settle();
}

/// One figure in milliseconds: what `act` takes until the client shows it.
template <class Act>
void MeasureShown(const std::string& work, const std::string& who, QWidget& client, Act act) {
    bench::Row(work, who, "ms", App().UntilShown(&client, act) / 1e6);
    Application::Settle();
}

/// The file of a million lines, read once so that it is in memory whoever opens it.
inline std::string MillionFile() {
    bench::Keep(bench::Input("netlist_1m.cir").size());
    return bench::InputPath("netlist_1m.cir");
}

/// The first so many lines of the file, one of kHit at the end of each.
inline std::string TextOfHits(std::size_t lines) {
    const std::string raw = bench::Input("netlist_1m.cir");
    std::string text;
    for (const std::string_view line : bench::LinesOf(raw)) {
        if (lines-- == 0)
            break;
        text.append(line).append(" ").append(kHit).append("\r\n");
    }
    return text;
}

inline std::string PastedText() {
    std::string text;
    for (int i = 0; i < kPastedLines; ++i)
        text += "M7 n1 n2 n3 0 nch w=3.20u l=0.18u m=2\n";
    return text;
}

/// Ends the program with its figures: what is built up is not taken down.
[[noreturn]] inline void End() {
    std::fflush(stdout);
    std::_Exit(0);
}

} // namespace screen
