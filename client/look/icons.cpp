// SPDX-License-Identifier: BSD-3-Clause
#include "icons.h"

#include <QLineF>
#include <QTransform>

namespace {

constexpr QPointF Centre(22, 22);

QPainterPath box(const QRectF& rectangle, qreal radius)
{
    QPainterPath path;
    path.addRoundedRect(rectangle, radius, radius);
    return path;
}

QPainterPath disc(const QPointF& middle, qreal radius)
{
    QPainterPath path;
    path.addEllipse(middle, radius, radius);
    return path;
}

QPainterPath polygon(const QVector<QPointF>& corners)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(corners));
    path.closeSubpath();
    return path;
}

QPainterPath stroke(const QPainterPath& line, qreal width)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(line);
}

} // namespace

QPainterPath Icons::calls()
{
    QPainterPath line(QPointF(6, 17));
    line.quadTo(QPointF(22, 3), QPointF(38, 17));
    const QPainterPath receiver =
        stroke(line, 8) | box({1, 14, 11, 11}, 4) | box({32, 14, 11, 11}, 4);
    return QTransform().translate(22, 22).rotate(-135).translate(-22, -16).map(receiver);
}

QPainterPath Icons::messages()
{
    return box({4, 7, 36, 25}, 9) | polygon({{12, 28}, {12, 40}, {24, 28}});
}

QPainterPath Icons::camera()
{
    const QPainterPath body = box({3, 12, 38, 25}, 6) | box({14, 7, 16, 10}, 4);
    return (body - disc({22, 24.5}, 9.5)) | disc({22, 24.5}, 5.5);
}

QPainterPath Icons::music()
{
    QPainterPath line(QPointF(17, 32));
    line.lineTo(17, 10);
    line.lineTo(36, 6);
    line.lineTo(36, 28);
    return stroke(line, 4) | disc({12.5, 33}, 6.5) | disc({31.5, 29}, 6.5);
}

QPainterPath Icons::places()
{
    QPainterPath drop(QPointF(22, 42));
    drop.cubicTo(QPointF(12, 29), QPointF(8, 24), QPointF(8, 17));
    drop.arcTo(QRectF(8, 3, 28, 28), 180, -180);
    drop.cubicTo(QPointF(36, 24), QPointF(32, 29), QPointF(22, 42));
    return drop - disc({22, 17}, 5.5);
}

QPainterPath Icons::pictures()
{
    const QPainterPath hills = polygon({{6, 34}, {16, 20}, {23, 29}, {28, 23}, {38, 34}});
    return ((box({3, 6, 38, 32}, 7) - box({6.5, 9.5, 31, 25}, 4)) | hills | disc({30, 16}, 3.5))
        .simplified();
}

QPainterPath Icons::calendar()
{
    QPainterPath sheet = box({5, 8, 34, 32}, 7) - box({9, 18, 26, 18}, 3);
    for (const qreal x : {13.0, 26.0}) {
        sheet |= box({x, 3, 5, 10}, 2.5);
    }
    for (const qreal x : {12.5, 19.5, 26.5}) {
        sheet |= box({x, 21, 5, 5}, 1.5);
    }
    return sheet | box({12.5, 28.5, 5, 5}, 1.5);
}

QPainterPath Icons::settings()
{
    constexpr int teeth = 8;
    QPainterPath wheel = disc(Centre, 14);
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const QTransform turn =
            QTransform().translate(22, 22).rotate(360.0 / teeth * tooth).translate(-22, -22);
        wheel |= turn.map(box({18, 3, 8, 10}, 2.5));
    }
    return wheel - disc(Centre, 6.5);
}
