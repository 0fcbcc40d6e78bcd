#include "desktop/qt/widgets/DrawnIcons.h"

#include <QHash>
#include <QPolygonF>
#include <QTransform>

#include <initializer_list>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QPainterPath polygon(std::initializer_list<QPointF> corners)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(corners)));
    path.closeSubpath();
    return path;
}

QPainterPath box(double x, double y, double width, double height)
{
    QPainterPath path;
    path.addRect(x, y, width, height);
    return path;
}

QPainterPath play()
{
    return polygon({{4, 2}, {13, 8}, {4, 14}});
}

QPainterPath pause()
{
    return box(4, 2, 3, 12) + box(9, 2, 3, 12);
}

QPainterPath forward()
{
    return polygon({{2, 3}, {7, 8}, {2, 13}}) + polygon({{7, 3}, {12, 8}, {7, 13}}) + box(12, 3, 2, 10);
}

QPainterPath mirrored(const QPainterPath& path)
{
    return QTransform(-1, 0, 0, 1, 16, 0).map(path);
}

QPainterPath up()
{
    return polygon({{8, 3}, {14, 9}, {12.5, 10.5}, {8, 6}, {3.5, 10.5}, {2, 9}});
}

QPainterPath pencil()
{
    return polygon({{2, 14}, {3, 10}, {10.5, 2.5}, {13.5, 5.5}, {6, 13}});
}

QPainterPath note(double x)
{
    QPainterPath path;
    path.addEllipse(x, 10, 4.5, 3.5);
    return path + box(x + 3, 3, 1.5, 9) + polygon({{x + 3, 3}, {x + 7, 5}, {x + 7, 7}, {x + 3, 5.5}});
}

QPainterPath list()
{
    return box(2, 3, 12, 1.5) + box(2, 7, 7, 1.5) + box(2, 11, 5, 1.5) + note(8).translated(0, 0.5);
}

QPainterPath star()
{
    return polygon({{8, 1},
                    {10.1, 5.9},
                    {15.3, 6.3},
                    {11.3, 9.7},
                    {12.6, 14.8},
                    {8, 12},
                    {3.4, 14.8},
                    {4.7, 9.7},
                    {0.7, 6.3},
                    {5.9, 5.9}});
}

QPainterPath speaker()
{
    QPainterPath waves;
    waves.addEllipse(6, 2, 9, 12);
    QPainterPath inner;
    inner.addEllipse(5, 3.5, 8, 9);
    return polygon({{1, 6}, {4, 6}, {8, 2}, {8, 14}, {4, 10}, {1, 10}}) + (waves - inner).intersected(box(9, 2, 6, 12));
}

QPainterPath folder()
{
    return polygon({{1, 3}, {6, 3}, {7.5, 5}, {15, 5}, {15, 13}, {1, 13}});
}

QPainterPath machine()
{
    return box(1, 3, 14, 9) - box(2.5, 4.5, 11, 6) + box(5, 13, 6, 1);
}

} // namespace

QPainterPath drawnIcon(const QString& name)
{
    static const QHash<QString, QPainterPath> shapes{{u"media-playback-start"_s, play()},
                                                     {u"media-playback-pause"_s, pause()},
                                                     {u"media-playback-stop"_s, box(3, 3, 10, 10)},
                                                     {u"media-skip-forward"_s, forward()},
                                                     {u"media-skip-backward"_s, mirrored(forward())},
                                                     {u"go-up"_s, up()},
                                                     {u"go-down"_s, QTransform(1, 0, 0, -1, 0, 16).map(up())},
                                                     {u"document-edit"_s, pencil()},
                                                     {u"view-media-playlist"_s, list()},
                                                     {u"view-media-track"_s, note(5)},
                                                     {u"emblem-favorite"_s, star()},
                                                     {u"audio-volume-high"_s, speaker()},
                                                     {u"folder"_s, folder()},
                                                     {u"folder-music"_s, folder()},
                                                     {u"folder-open"_s, folder()},
                                                     {u"folder-remote"_s, folder()},
                                                     {u"user-home"_s, folder()},
                                                     {u"go-home"_s, folder()},
                                                     {u"computer"_s, machine()},
                                                     {u"network-workgroup"_s, machine()},
                                                     {u"drive-harddisk"_s, machine()},
                                                     {u"drive-removable-media"_s, machine()}};
    return shapes.value(name);
}

} // namespace orvantine
