#include <atomic>
#include <thread>

#include <QApplication>

#include "desk_stage.h"
#include "single_instance.h"

namespace {

TEST_F(DeskTest, AWindowTakesTheFilesOfLaterStarts) {
    const QString name = QString::fromStdString(PathOf("socket"));
    const std::vector<FileTarget> files{{"/a b.cir", {3, 4}}, {"/\xFF"}};
    EXPECT_FALSE(SingleInstance(name).HandOver(files)) << "nobody is there";

    std::vector<FileTarget> taken;
    SingleInstance window(name);
    ASSERT_TRUE(window.Listen([&](const auto& given) { taken = given; }));
    bool isDone = false;
    std::atomic<bool> isOver = false;
    std::thread later([&] {
        isDone = SingleInstance(name).HandOver(files);
        isOver = true;
    });
    while (!isOver)
        QApplication::processEvents(QEventLoop::AllEvents, 5);
    later.join();
    EXPECT_TRUE(isDone);
    EXPECT_EQ(taken, files);
}

} // namespace
