// Draws the design pictures of the seating notes as PNG files into the folder given; the
// script scripts/make-designs.sh turns them into the GIFs kept in design/. Each picture is
// the printed lower half of a note, 3960 by 2025 twips, at 288 dots to the inch. The name
// and table number are printed over the middle in bold black, so the middle stays pale and
// the ornament keeps to the edges. Every random choice comes from a fixed seed: the same
// drawing gives the same pictures.

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRandomGenerator>
#include <QtMath>

#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int W = 792;
constexpr int H = 405;

QColor rgba(int r, int g, int b, int a = 255)
{
    return QColor(r, g, b, a);
}

// Soft colours of the set.
const QColor Blush = rgba(240, 196, 200);
const QColor Rose = rgba(226, 150, 164);
const QColor Peach = rgba(246, 206, 178);
const QColor Sage = rgba(150, 178, 140);
const QColor SageDark = rgba(112, 144, 108);
const QColor Olive = rgba(124, 140, 96);
const QColor Gold = rgba(205, 170, 100);
const QColor GoldLight = rgba(236, 214, 160);
const QColor Lavender = rgba(200, 190, 226);

double gauss(QRandomGenerator& random, double sigma)
{
    // Box-Muller, enough for soft shapes.
    const double u = std::max(1e-9, random.generateDouble());
    const double v = random.generateDouble();
    return sigma * std::sqrt(-2 * std::log(u)) * std::cos(2 * M_PI * v);
}

// A leaf from `base` pointing at `angle` degrees (0 = right, screen y down).
void leaf(QPainter& p, QPointF base, double angle, double length, double width, QColor colour)
{
    p.save();
    p.translate(base);
    p.rotate(angle);
    QPainterPath shape;
    shape.moveTo(0, 0);
    shape.cubicTo(length * 0.25, -width * 0.9, length * 0.7, -width * 0.7, length, 0);
    shape.cubicTo(length * 0.7, width * 0.7, length * 0.25, width * 0.9, 0, 0);
    QLinearGradient fill(0, -width, 0, width);
    fill.setColorAt(0, colour.lighter(118));
    fill.setColorAt(1, colour.darker(104));
    p.setPen(Qt::NoPen);
    p.setBrush(fill);
    p.drawPath(shape);
    p.setPen(QPen(colour.lighter(135), std::max(0.8, width * 0.12), Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(length * 0.05, 0), QPointF(length * 0.85, 0));
    p.restore();
}

// A five-petalled blossom with a radial glow on each petal and a ring of stamens.
void blossom(QPainter& p, QPointF centre, double radius, QColor petal, double turn)
{
    p.save();
    p.translate(centre);
    p.rotate(turn);
    for (int i = 0; i < 5; ++i) {
        p.save();
        p.rotate(i * 72.0);
        QPainterPath shape;
        shape.moveTo(0, 0);
        shape.cubicTo(radius * 0.2, -radius * 0.55, radius * 0.95, -radius * 0.6, radius, 0);
        shape.cubicTo(radius * 0.95, radius * 0.6, radius * 0.2, radius * 0.55, 0, 0);
        QRadialGradient glow(QPointF(radius * 0.15, 0), radius);
        glow.setColorAt(0, petal.darker(112));
        glow.setColorAt(0.55, petal);
        glow.setColorAt(1, petal.lighter(112));
        p.setPen(QPen(petal.darker(118), 0.8));
        p.setBrush(glow);
        p.drawPath(shape);
        p.restore();
    }
    p.setPen(Qt::NoPen);
    p.setBrush(rgba(236, 200, 120));
    p.drawEllipse(QPointF(0, 0), radius * 0.2, radius * 0.2);
    p.setBrush(rgba(190, 140, 80));
    for (int i = 0; i < 8; ++i) {
        const double a = qDegreesToRadians(i * 45.0 + 20);
        p.drawEllipse(QPointF(std::cos(a), std::sin(a)) * radius * 0.28, radius * 0.045, radius * 0.045);
    }
    p.restore();
}

// A rose seen from above: layered cupped petals around a tight spiral.
void rose(QPainter& p, QPointF centre, double radius, QColor colour, double turn)
{
    p.save();
    p.translate(centre);
    p.rotate(turn);
    for (int ring = 0; ring < 4; ++ring) {
        const double r = radius * (1.0 - ring * 0.22);
        const int petals = 5 - (ring > 1 ? 1 : 0);
        const QColor shade = colour.darker(100 + ring * 9);
        for (int i = 0; i < petals; ++i) {
            p.save();
            p.rotate(i * 360.0 / petals + ring * 31);
            QPainterPath petal;
            petal.moveTo(-r * 0.55, -r * 0.15);
            petal.cubicTo(-r * 0.5, -r * 1.05, r * 0.5, -r * 1.05, r * 0.55, -r * 0.15);
            petal.quadTo(0, -r * 0.35, -r * 0.55, -r * 0.15);
            QRadialGradient g(QPointF(0, -r * 0.2), r);
            g.setColorAt(0, shade.darker(108));
            g.setColorAt(1, shade.lighter(112));
            p.setPen(QPen(shade.darker(115), 0.7));
            p.setBrush(g);
            p.drawPath(petal);
            p.restore();
        }
    }
    p.setPen(QPen(colour.darker(140), radius * 0.06, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    QPainterPath spiral;
    for (int i = 0; i <= 40; ++i) {
        const double a = i * 0.42;
        const double rr = radius * 0.03 + radius * 0.006 * i;
        const QPointF at(std::cos(a) * rr, std::sin(a) * rr);
        if (i == 0)
            spiral.moveTo(at);
        else
            spiral.lineTo(at);
    }
    p.drawPath(spiral);
    p.restore();
}

// Leaves set along a stem in turn on either side.
void leafyStem(QPainter& p, const QPainterPath& stem, QColor colour, double leafLength, int leaves, double stemWidth,
               QRandomGenerator& random)
{
    p.setPen(QPen(colour.darker(125), stemWidth, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(stem);
    for (int i = 0; i < leaves; ++i) {
        const double t = 0.08 + 0.9 * (i + 0.5) / leaves;
        const QPointF at = stem.pointAtPercent(t);
        const double along = -stem.angleAtPercent(t); // Qt's angle is counter-clockwise
        const double side = (i % 2 == 0) ? -48 : 48;
        const double length = leafLength * (0.75 + 0.35 * random.generateDouble()) * (1.1 - 0.35 * t);
        leaf(p, at, along + side + gauss(random, 6), length, length * 0.3, colour);
    }
    leaf(p, stem.pointAtPercent(1), -stem.angleAtPercent(1), leafLength * 0.8, leafLength * 0.24, colour);
}

// A blot of watercolour: a polygon deformed many times and glazed in thin layers, so its
// edges fade and gather pigment as real washes do.
std::vector<QPointF> deform(const std::vector<QPointF>& shape, int rounds, double spread, QRandomGenerator& random)
{
    std::vector<QPointF> current = shape;
    for (int round = 0; round < rounds; ++round) {
        std::vector<QPointF> next;
        for (size_t i = 0; i < current.size(); ++i) {
            const QPointF a = current[i];
            const QPointF b = current[(i + 1) % current.size()];
            next.push_back(a);
            const QPointF edge = b - a;
            const double len = std::hypot(edge.x(), edge.y());
            const QPointF mid = (a + b) / 2 + QPointF(gauss(random, len * spread), gauss(random, len * spread));
            next.push_back(mid);
        }
        current = next;
        spread *= 0.85;
    }
    return current;
}

void wash(QPainter& p, QPointF centre, double radius, QColor colour, QRandomGenerator& random, int layers = 40,
          int alpha = 7)
{
    std::vector<QPointF> base;
    for (int i = 0; i < 12; ++i) {
        const double a = 2 * M_PI * i / 12;
        base.push_back(centre + QPointF(std::cos(a), std::sin(a) * 0.75) * radius);
    }
    base = deform(base, 3, 0.35, random);
    QColor layer = colour;
    layer.setAlpha(alpha);
    p.setPen(Qt::NoPen);
    p.setBrush(layer);
    for (int i = 0; i < layers; ++i) {
        const auto shape = deform(base, 3, 0.3, random);
        p.drawPolygon(shape.data(), int(shape.size()));
    }
    // A faint darker rim where the pigment dried.
    QColor rim = colour.darker(112);
    rim.setAlpha(alpha * 2);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(rim, 1.2));
    for (int i = 0; i < 3; ++i) {
        const auto shape = deform(base, 2, 0.2, random);
        p.drawPolygon(shape.data(), int(shape.size()));
    }
}

QImage canvas()
{
    QImage image(W, H, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

void begin(QPainter& p, QImage& image)
{
    p.begin(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
}

// Blush roses and blossoms in two corners, on sprays of sage leaves.
QImage flowers()
{
    QImage image = canvas();
    QPainter p;
    begin(p, image);
    QRandomGenerator random(11);
    auto spray = [&](bool mirrored) {
        p.save();
        if (mirrored) {
            p.translate(W, H);
            p.rotate(180);
        }
        QPainterPath one(QPointF(10, H - 20));
        one.cubicTo(90, H - 60, 160, H - 40, 250, H - 18);
        QPainterPath two(QPointF(20, H - 30));
        two.cubicTo(40, H - 120, 70, H - 180, 60, H - 250);
        QPainterPath three(QPointF(30, H - 40));
        three.cubicTo(90, H - 110, 140, H - 120, 190, H - 150);
        leafyStem(p, one, Sage, 34, 7, 1.8, random);
        leafyStem(p, two, SageDark, 30, 6, 1.6, random);
        leafyStem(p, three, Sage, 26, 5, 1.4, random);
        rose(p, QPointF(70, H - 62), 38, Blush, 10);
        rose(p, QPointF(128, H - 38), 26, Peach, 40);
        blossom(p, QPointF(36, H - 128), 20, rgba(248, 222, 226), 15);
        blossom(p, QPointF(168, H - 104), 15, rgba(250, 230, 214), 50);
        blossom(p, QPointF(205, H - 30), 12, rgba(244, 210, 218), 5);
        for (const QPointF& bud : {QPointF(58, H - 232), QPointF(186, H - 146), QPointF(246, H - 22)}) {
            p.setPen(Qt::NoPen);
            p.setBrush(Rose.lighter(110));
            p.drawEllipse(bud, 5.5, 7.5);
        }
        p.restore();
    };
    spray(false);
    spray(true);
    p.end();
    return image;
}

void ring(QPainter& p, QPointF centre, double radius, double band, double tilt)
{
    p.save();
    p.translate(centre);
    p.rotate(tilt);
    QPainterPath shape;
    shape.addEllipse(QPointF(0, 0), radius, radius * 0.82);
    shape.addEllipse(QPointF(0, radius * 0.05), radius - band, radius * 0.82 - band * 1.1);
    shape.setFillRule(Qt::OddEvenFill);
    QLinearGradient metal(-radius, -radius, radius, radius);
    metal.setColorAt(0, rgba(246, 230, 186));
    metal.setColorAt(0.3, Gold);
    metal.setColorAt(0.55, rgba(250, 238, 204));
    metal.setColorAt(0.8, rgba(196, 156, 86));
    metal.setColorAt(1, rgba(236, 212, 150));
    p.setPen(QPen(rgba(176, 138, 72), 1));
    p.setBrush(metal);
    p.drawPath(shape);
    p.restore();
}

void sparkle(QPainter& p, QPointF at, double size, QColor colour)
{
    QPainterPath star;
    star.moveTo(at + QPointF(0, -size));
    star.quadTo(at, at + QPointF(size, 0));
    star.quadTo(at, at + QPointF(0, size));
    star.quadTo(at, at + QPointF(-size, 0));
    star.quadTo(at, at + QPointF(0, -size));
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    p.drawPath(star);
}

// Two linked gold rings low in the middle, fine flourishes and sparkles about them.
QImage rings()
{
    QImage image = canvas();
    QPainter p;
    begin(p, image);
    QRadialGradient halo(QPointF(W / 2.0, H - 70), 220);
    halo.setColorAt(0, rgba(252, 240, 214));
    halo.setColorAt(1, rgba(255, 255, 255, 0));
    p.fillRect(image.rect(), halo);

    const QPointF left(W / 2.0 - 30, H - 74), right(W / 2.0 + 30, H - 70);
    ring(p, left, 50, 8, -12);
    ring(p, right, 50, 8, 14);
    // The left ring passes over the right one at its lower crossing.
    p.save();
    p.setClipRect(QRectF(W / 2.0 - 20, H - 74, 40, 60));
    ring(p, left, 50, 8, -12);
    p.restore();

    p.setBrush(Qt::NoBrush);
    for (int side : {-1, 1}) {
        QPainterPath curl;
        const double x0 = W / 2.0 + side * 100;
        curl.moveTo(x0, H - 60);
        curl.cubicTo(x0 + side * 80, H - 20, x0 + side * 160, H - 110, x0 + side * 250, H - 50);
        curl.cubicTo(x0 + side * 275, H - 35, x0 + side * 268, H - 12, x0 + side * 245, H - 22);
        p.setPen(QPen(GoldLight.darker(108), 2.2, Qt::SolidLine, Qt::RoundCap));
        p.drawPath(curl);
        QPainterPath tendril;
        tendril.moveTo(x0 + side * 120, H - 62);
        tendril.cubicTo(x0 + side * 140, H - 110, x0 + side * 200, H - 112, x0 + side * 210, H - 86);
        p.setPen(QPen(GoldLight, 1.4, Qt::SolidLine, Qt::RoundCap));
        p.drawPath(tendril);
        for (double t : {0.25, 0.55, 0.8})
            leaf(p, curl.pointAtPercent(t), -curl.angleAtPercent(t) - side * 40, 18, 5, GoldLight);
    }
    for (const auto& [x, y, s] : std::vector<std::tuple<double, double, double>>{
             {W / 2.0 - 96, H - 150, 9}, {W / 2.0 + 88, H - 138, 7}, {W / 2.0 + 112, H - 30, 5},
             {W / 2.0 - 120, H - 24, 6}, {W / 2.0 + 8, H - 150, 4}})
        sparkle(p, QPointF(x, y), s, Gold.lighter(112));
    p.end();
    return image;
}

// A chuppah over the names: a draped canopy along the top, slender poles at the sides,
// greenery and blossoms where the poles meet the canopy and the ground.
QImage chuppah()
{
    QImage image = canvas();
    QPainter p;
    begin(p, image);
    QRandomGenerator random(5);
    const double poleX[] = {44, W - 44.0};
    for (double x : poleX) {
        QLinearGradient wood(x - 4, 0, x + 4, 0);
        wood.setColorAt(0, rgba(214, 186, 130));
        wood.setColorAt(0.5, rgba(244, 226, 186));
        wood.setColorAt(1, rgba(196, 164, 108));
        p.setPen(Qt::NoPen);
        p.setBrush(wood);
        p.drawRoundedRect(QRectF(x - 4, 30, 8, H - 46), 3, 3);
        p.setBrush(rgba(200, 168, 110));
        p.drawEllipse(QPointF(x, 28), 7, 7);
    }
    // The canopy: a cloth hanging in swags between the poles, with a soft shadow.
    QPainterPath cloth;
    cloth.moveTo(20, 14);
    cloth.lineTo(W - 20, 14);
    const int swags = 4;
    const double span = (W - 40.0) / swags;
    double x = W - 20.0;
    cloth.lineTo(x, 40);
    for (int i = 0; i < swags; ++i) {
        const double nx = x - span;
        cloth.cubicTo(x - span * 0.2, 78, nx + span * 0.2, 78, nx, 40);
        x = nx;
    }
    cloth.closeSubpath();
    QLinearGradient drape(0, 10, 0, 80);
    drape.setColorAt(0, rgba(250, 236, 232));
    drape.setColorAt(1, rgba(244, 214, 214));
    p.setPen(QPen(rgba(226, 188, 190), 1.2));
    p.setBrush(drape);
    p.drawPath(cloth);
    // Folds of the cloth.
    p.setPen(QPen(rgba(232, 200, 200), 1));
    for (int i = 0; i < swags; ++i) {
        const double cx = 20 + span * (i + 0.5);
        QPainterPath fold;
        fold.moveTo(cx - span * 0.3, 20);
        fold.quadTo(cx, 58, cx + span * 0.3, 20);
        p.drawPath(fold);
    }
    p.setPen(QPen(Gold, 2));
    p.drawLine(QPointF(20, 14), QPointF(W - 20, 14));
    // Greenery and flowers at the corners of the canopy and at the poles' feet.
    for (double px : poleX) {
        const double dir = px < W / 2 ? 1 : -1;
        QPainterPath garland(QPointF(px - dir * 20, 22));
        garland.cubicTo(px + dir * 30, 52, px + dir * 80, 30, px + dir * 130, 20);
        leafyStem(p, garland, Sage, 20, 7, 1.2, random);
        QPainterPath low(QPointF(px - dir * 26, H - 12));
        low.cubicTo(px + dir * 10, H - 40, px + dir * 50, H - 30, px + dir * 110, H - 14);
        leafyStem(p, low, SageDark, 22, 6, 1.3, random);
        QPainterPath up(QPointF(px, H - 14));
        up.cubicTo(px + dir * 10, H - 60, px - dir * 6, H - 90, px + dir * 6, H - 130);
        leafyStem(p, up, Sage, 18, 6, 1.1, random);
        rose(p, QPointF(px + dir * 8, 34), 17, Blush, 20);
        blossom(p, QPointF(px + dir * 48, 42), 10, rgba(250, 232, 236), 30);
        rose(p, QPointF(px + dir * 14, H - 22), 20, Blush, 60);
        blossom(p, QPointF(px + dir * 46, H - 30), 12, rgba(250, 230, 214), 10);
    }
    p.end();
    return image;
}

// Two olive branches rising from the lower corners towards the middle.
QImage olive()
{
    QImage image = canvas();
    QPainter p;
    begin(p, image);
    QRandomGenerator random(23);
    for (int side : {-1, 1}) {
        const double x0 = side < 0 ? 18 : W - 18.0;
        QPainterPath branch(QPointF(x0, H - 48));
        branch.cubicTo(x0 - side * 120, H - 40, x0 - side * 230, H - 60, x0 - side * 330, H - 104);
        p.setPen(QPen(rgba(150, 128, 96), 2.6, Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawPath(branch);
        for (int i = 0; i < 15; ++i) {
            const double t = 0.05 + 0.93 * i / 14.0;
            const QPointF at = branch.pointAtPercent(t);
            const double along = -branch.angleAtPercent(t);
            const double tilt = (i % 2 == 0 ? -38 : 38) + gauss(random, 6);
            const double length = 40 * (1.05 - 0.4 * t) * (0.85 + 0.3 * random.generateDouble());
            const QColor colour = i % 3 == 0 ? SageDark.lighter(106) : rgba(160, 182, 150);
            leaf(p, at, along + tilt, length, length * 0.17, colour);
        }
        leaf(p, branch.pointAtPercent(1), -branch.angleAtPercent(1), 30, 5, rgba(160, 182, 150));
        for (const double t : {0.22, 0.47, 0.7}) {
            const QPointF at = branch.pointAtPercent(t) + QPointF(side * 4, 13);
            p.setPen(QPen(rgba(150, 128, 96), 1.2));
            p.drawLine(branch.pointAtPercent(t), at);
            QRadialGradient fruit(at + QPointF(-2, -3), 9);
            fruit.setColorAt(0, rgba(176, 176, 132));
            fruit.setColorAt(1, Olive);
            p.setPen(Qt::NoPen);
            p.setBrush(fruit);
            p.drawEllipse(at + QPointF(0, 6), 5.5, 7.5);
        }
    }
    // A single leaf pair where the branches meet.
    leaf(p, QPointF(W / 2.0, H - 92), -100, 20, 4, rgba(160, 182, 150));
    leaf(p, QPointF(W / 2.0, H - 92), -80, 20, 4, SageDark.lighter(110));
    p.end();
    return image;
}

// A fine double border in champagne gold, with a curl in each corner and a small
// ornament at the middle of the top and bottom.
QImage border()
{
    QImage image = canvas();
    QPainter p;
    begin(p, image);
    const QRectF outer(14, 14, W - 28, H - 28);
    const QRectF inner = outer.adjusted(9, 9, -9, -9);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Gold, 2.4));
    p.drawRect(outer);
    p.setPen(QPen(GoldLight.darker(104), 1.1));
    p.drawRect(inner);

    auto corner = [&](double sx, double sy, QPointF at) {
        p.save();
        p.translate(at);
        p.scale(sx, sy);
        QPainterPath curl;
        curl.moveTo(0, 70);
        curl.cubicTo(0, 30, 10, 10, 40, 8);
        curl.cubicTo(62, 6, 66, 30, 48, 34);
        curl.cubicTo(36, 37, 32, 24, 42, 22);
        QPainterPath other;
        other.moveTo(70, 0);
        other.cubicTo(30, 0, 12, 12, 10, 40);
        other.cubicTo(8, 60, 30, 66, 34, 48);
        other.cubicTo(36, 36, 24, 32, 22, 42);
        p.setPen(QPen(Gold, 2, Qt::SolidLine, Qt::RoundCap));
        p.drawPath(curl);
        p.drawPath(other);
        p.setPen(Qt::NoPen);
        p.setBrush(Gold);
        p.drawEllipse(QPointF(14, 14), 4, 4);
        p.restore();
    };
    corner(1, 1, inner.topLeft() + QPointF(6, 6));
    corner(-1, 1, inner.topRight() + QPointF(-6, 6));
    corner(1, -1, inner.bottomLeft() + QPointF(6, -6));
    corner(-1, -1, inner.bottomRight() + QPointF(-6, -6));

    auto ornament = [&](double y, double dir) {
        const double cx = W / 2.0;
        // A small diamond with two leaves of line running off to either side.
        QPainterPath diamond;
        diamond.moveTo(cx, y - 7);
        diamond.lineTo(cx + 7, y);
        diamond.lineTo(cx, y + 7);
        diamond.lineTo(cx - 7, y);
        diamond.closeSubpath();
        p.setPen(Qt::NoPen);
        p.setBrush(Gold);
        p.drawPath(diamond);
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(Gold, 1.6, Qt::SolidLine, Qt::RoundCap));
        for (int s : {-1, 1}) {
            QPainterPath swirl;
            swirl.moveTo(cx + s * 10, y);
            swirl.cubicTo(cx + s * 30, y + dir * 12, cx + s * 50, y - dir * 8, cx + s * 70, y + dir * 2);
            swirl.cubicTo(cx + s * 78, y + dir * 5, cx + s * 82, y - dir * 4, cx + s * 76, y - dir * 5);
            p.drawPath(swirl);
            p.setPen(QPen(GoldLight.darker(104), 1.1));
            p.drawLine(QPointF(cx + s * 90, y), QPointF(cx + s * 180, y));
            p.setPen(QPen(Gold, 1.6, Qt::SolidLine, Qt::RoundCap));
        }
    };
    ornament(inner.top() + 14, 1);
    ornament(inner.bottom() - 14, -1);
    p.end();
    return image;
}

// A loose watercolour wash in blush, peach and lavender, deep in the corners and fading
// to white paper in the middle.
QImage watercolour()
{
    QImage image = canvas();
    QPainter p;
    begin(p, image);
    QRandomGenerator random(7);
    wash(p, QPointF(40, H - 30), 150, Blush, random, 45, 8);
    wash(p, QPointF(150, H + 10), 110, Peach, random, 40, 7);
    wash(p, QPointF(W - 30, 20), 150, Lavender, random, 45, 8);
    wash(p, QPointF(W - 160, -20), 100, Blush, random, 35, 7);
    wash(p, QPointF(W - 40, H - 10), 90, Peach, random, 30, 6);
    wash(p, QPointF(20, 10), 80, Lavender, random, 30, 6);
    // A few small splashes.
    for (const auto& [x, y, r] : std::vector<std::tuple<double, double, double>>{
             {230, H - 40, 12}, {262, H - 18, 7}, {W - 240, 40, 10}, {W - 210, 16, 6}, {96, 60, 8}})
        wash(p, QPointF(x, y), r, Rose, random, 18, 10);
    p.end();
    return image;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: velmora-draw-designs <folder>\n");
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const std::vector<std::pair<const char*, std::function<QImage()>>> designs = {
        {"פרחים", flowers}, {"טבעות", rings}, {"חופה", chuppah},
        {"ענפי זית", olive}, {"מסגרת זהב", border}, {"צבעי מים", watercolour},
    };
    for (const auto& [name, draw] : designs) {
        const QString file = folder.filePath(QString::fromUtf8(name) + QStringLiteral(".png"));
        if (!draw().save(file)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
