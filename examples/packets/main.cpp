// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A list of packets that come at 200,000 a second, from a capture that is made up first and read by
// libpcap. A thread reads; once a frame the model adds all that came. Scroll up, and the packets
// that are looked at stay. Ctrl+End leads to the newest ones again. The status bar tells packets
// and frames a second.
//
//     example-packets [packets a second]

#include "capturethread.h"
#include "itemdelegate.h"
#include "packetmodel.h"
#include "qtablefastview.h"
#include "samplecapture.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QTemporaryDir>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int usualRate = 200'000; // packets a second
constexpr int sample = 500'000;    // packets

//! Counts the frames that it paints.
class PacketView : public QTableFastView
{
public:
    int takeFrames() { return std::exchange(m_frames, 0); }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QTableFastView::paintEvent(event);
        ++m_frames;
    }

private:
    int m_frames = 0;
};

void setUp(PacketView *view, PacketModel *model)
{
    view->setItemDelegate(new Vantix::ItemDelegate(view));
    view->setPaintBufferEnabled(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setModel(model);
    const int widths[] = {90, 100, 150, 150, 70, 60};
    for (int column = 0; column < PacketModel::ColumnCount; ++column)
        view->header()->resizeSection(column, widths[column]);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QTemporaryDir folder;
    const QString capture = folder.filePath("sample.pcap");
    if (!writeSampleCapture(capture, sample))
        qFatal("The sample cannot be written.");
    const int asked = argc > 1 ? QByteArray(argv[1]).toInt() : 0;

    PacketModel model;
    CaptureThread thread(capture, asked > 0 ? asked : usualRate);
    QWidget window;
    auto *view = new PacketView;
    setUp(view, &model);
    auto *rates = new QLabel;
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(view);
    layout->addWidget(rates);
    window.setWindowTitle("Packets");
    window.resize(700, 460);
    window.show();

    QTimer frames;
    QObject::connect(&frames, &QTimer::timeout, view, [&] {
        const bool wasEmpty = model.rowCount() == 0;
        model.add(thread.take());
        if (wasEmpty && model.rowCount() > 0)
            view->setCurrentLast(); // follow from the first one on
    });
    QTimer second;
    int known = 0;
    QObject::connect(&second, &QTimer::timeout, view, [&] {
        const QLocale locale;
        rates->setText(QStringLiteral("%1 packets, %2 and %3 frames in the last second")
                           .arg(locale.toString(model.rowCount()),
                                locale.toString(model.rowCount() - known),
                                locale.toString(view->takeFrames())));
        known = model.rowCount();
    });
    thread.start();
    frames.start(16);
    second.start(1000);
    return QApplication::exec();
}
