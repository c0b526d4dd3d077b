#include "line_icon.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace {

/// Strokes on a field of 24 by 24: M and L take a point, C two control points and a point, O a
/// circle's centre and radius, Z closes.
constexpr const char* kPictures[] = {
    "M6 3 L14 3 L18.5 7.5 L18.5 21 L6 21 Z M14 3 L14 7.5 L18.5 7.5",
    "M3 19 L3 5 L9 5 L11 7.5 L18 7.5 L18 10.5 M3 19 L6.5 10.5 L21.5 10.5 L18 19 Z",
    "M4 4 L17 4 L20 7 L20 20 L4 20 Z M8 4 L8 9 L15 9 L15 4 M7 20 L7 13.5 L17 13.5 L17 20",
    "M7 9 L7 3.5 L17 3.5 L17 9 M7 17 L3.5 17 L3.5 9 L20.5 9 L20.5 17 L17 17 M7 14 L17 14 L17 20.5 "
    "L7 20.5 Z",
    "M9 5 L4.5 9.5 L9 14 M4.5 9.5 L14 9.5 C21.5 9.5 21.5 19.5 14 19.5 L9 19.5",
    "M15 5 L19.5 9.5 L15 14 M19.5 9.5 L10 9.5 C2.5 9.5 2.5 19.5 10 19.5 L15 19.5",
    "O6.5 18 2.7 O17.5 18 2.7 M8 15.7 L16.5 3.5 M16 15.7 L7.5 3.5",
    "M8.5 7.5 L20 7.5 L20 21 L8.5 21 Z M5.5 16.5 L4 16.5 L4 3 L15.5 3 L15.5 4.5",
    "M8 5 L5 5 L5 21 L19 21 L19 5 L16 5 M8.5 3 L15.5 3 L15.5 7 L8.5 7 Z",
    "M7 3.5 L17 3.5 L17 20.5 L12 16 L7 20.5 Z",
    "M7 12 L7 3.5 L17 3.5 L17 9 M7 15 L7 20.5 L10 17.8 M13 12 L20 19 M20 12 L13 19",
    "M4 3.5 L12 3.5 L12 18 L8 14.5 L4 18 Z M18 5 L18 19 M14.5 15.5 L18 19 L21.5 15.5",
    "M4 3.5 L12 3.5 L12 18 L8 14.5 L4 18 Z M18 19 L18 5 M14.5 8.5 L18 5 L21.5 8.5",
    "O9.5 9.5 6 M14 14 L17 17 M19.5 9 L19.5 21 M16.5 18 L19.5 21 L22.5 18",
    "O9.5 9.5 6 M14 14 L17 17 M19.5 21 L19.5 9 M16.5 12 L19.5 9 L22.5 12",
    "O9.5 9.5 6.5 M14 14 L17 17 M6.7 12.6 L9.5 6 L12.3 12.6 M7.8 10.4 L11.2 10.4 M19.5 9 L19.5 21 "
    "M16.5 18 L19.5 21 L22.5 18",
    "O9.5 9.5 6.5 M14 14 L17 17 M6.7 12.6 L9.5 6 L12.3 12.6 M7.8 10.4 L11.2 10.4 M19.5 21 L19.5 9 "
    "M16.5 12 L19.5 9 L22.5 12",
    "M6 6 L18 18 M18 6 L6 18",
};
static_assert(std::size(kPictures) == static_cast<std::size_t>(LineIcon::count));

constexpr qreal kField = 24;
constexpr qreal kStroke = 1.6;

/// Reads the numbers of a picture one after the other.
class PictureReader {
public:
    explicit PictureReader(const char* text) : m_At(text) {}

    QPainterPath Read() {
        QPainterPath path;
        while (const char step = NextStep())
            Add(path, step);
        return path;
    }

private:
    char NextStep() {
        while (*m_At == ' ')
            ++m_At;
        return *m_At ? *m_At++ : '\0';
    }
    qreal Number() {
        char* end = nullptr;
        const qreal number = std::strtod(m_At, &end);
        m_At = end;
        return number;
    }
    QPointF Point() {
        const qreal x = Number();
        return {x, Number()};
    }
    void Add(QPainterPath& path, char step) {
        if (step == 'M') {
            path.moveTo(Point());
        } else if (step == 'L') {
            path.lineTo(Point());
        } else if (step == 'C') {
            const QPointF first = Point(), second = Point();
            path.cubicTo(first, second, Point());
        } else if (step == 'O') {
            const QPointF centre = Point();
            const qreal radius = Number();
            path.addEllipse(centre, radius, radius);
        } else {
            path.closeSubpath();
        }
    }

    const char* m_At;
};

class LineIconEngine : public QIconEngine {
public:
    explicit LineIconEngine(LineIcon icon) : m_Icon(icon) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette colors = QApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role =
            mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const qreal size = std::min(rect.width(), rect.height());
        painter->translate(QRectF(rect).center());
        painter->scale(size / kField, size / kField);
        painter->translate(-kField / 2, -kField / 2);
        painter->setPen(
            QPen(colors.color(group, role), kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(PictureReader(kPictures[static_cast<std::size_t>(m_Icon)]).Read());
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect({}, size), mode, state);
        return picture;
    }
    QIconEngine* clone() const override { return new LineIconEngine(*this); }

private:
    LineIcon m_Icon;
};

/// The program's icon as its picture file has it: a page with a resistor across.
QPixmap DrawProgramIcon(int size) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 64.0, size / 64.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1F, 0x4E, 0x79));
    painter.drawRoundedRect(QRectF(4, 4, 56, 56), 12, 12);
    painter.setPen(QPen(Qt::white, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(
        PictureReader("M10 26 L17 26 L20 18 L26 34 L32 18 L38 34 L44 18 L47 26 L54 26").Read());
    painter.setPen(QPen(QColor(0x9C, 0xC9, 0xF0), 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(PictureReader("M16 44 L48 44 M16 52 L36 52").Read());
    return picture;
}

} // namespace

QIcon MakeLineIcon(LineIcon icon) {
    return QIcon(new LineIconEngine(icon));
}

QIcon MakeProgramIcon() {
    QIcon drawn;
    for (const int size : {16, 24, 32, 48, 64, 128})
        drawn.addPixmap(DrawProgramIcon(size));
    return QIcon::fromTheme(QStringLiteral("quorel-desktop"), drawn);
}
