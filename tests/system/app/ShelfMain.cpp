/// A window of another program, for tests of what goes between programs: what is given to it can be drawn out of it or
/// lies on the clipboard, and what is let fall on it is told.
/// usage: shelf (--drag | --copy) [FORMAT FILE]…
/// It prints a line for each thing that happens. With --paste it prints the text on the clipboard, and ends.

#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QDragEnterEvent>
#include <QFile>
#include <QMimeData>
#include <QMouseEvent>
#include <QWidget>

#include <cstdio>

namespace {

void tell(const QByteArray& line)
{
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

class Shelf final : public QWidget
{
public:
    explicit Shelf(const QStringList& content) : m_content(content)
    {
        setWindowTitle(QStringLiteral("Shelf"));
        setAcceptDrops(true);
        setGeometry(1120, 100, 240, 240);
    }

    /// Read anew each time: tests change the files meanwhile.
    [[nodiscard]] QMimeData* content() const
    {
        auto* const mime = new QMimeData;
        for (qsizetype i = 0; i + 1 < m_content.size(); i += 2) {
            QFile file(m_content[i + 1]);
            if (file.open(QFile::ReadOnly))
                mime->setData(m_content[i], file.readAll());
        }
        return mime;
    }

protected:
    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (event->buttons() != Qt::LeftButton || m_content.isEmpty())
            return;
        auto* const drag = new QDrag(this);
        drag->setMimeData(content());
        connect(drag, &QDrag::actionChanged, this, [](Qt::DropAction action) {
            tell(action == Qt::IgnoreAction ? "refused" : "accepted " + QByteArray::number(action));
        });
        tell("drag");
        const Qt::DropAction done = drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, Qt::MoveAction);
        tell("done " + QByteArray::number(done));
    }

    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }

    void dragMoveEvent(QDragMoveEvent* event) override
    {
        event->acceptProposedAction();
        tell("over");
    }

    void dropEvent(QDropEvent* event) override
    {
        event->acceptProposedAction();
        tell("got " + event->mimeData()->data(QStringLiteral("text/uri-list")).toPercentEncoding());
    }

private:
    QStringList m_content;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QStringLiteral("--paste")) {
        tell(QGuiApplication::clipboard()->text().toUtf8());
        return 0;
    }
    Shelf shelf(arguments.mid(2));
    if (arguments.value(1) == QStringLiteral("--copy"))
        QGuiApplication::clipboard()->setMimeData(shelf.content());
    shelf.show();
    tell("ready");
    return QApplication::exec();
}
