#pragma once

#include "desktop/qt/window/MainWindow.h"
#include "gui/Sample.h"
#include "support/FakeDesktop.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace orvantine {

/// The main window over a fake desktop, with sample data once it is open.
class OpenWindow : public testing::Test
{
protected:
    OpenWindow()
    {
        desktop.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
    }

    void open()
    {
        fake::showSample(root);
        root.Visible = true;
        QApplication::setActiveWindow(&window);
    }

    template <class W = QWidget>
    W* find(const Control& control) const
    {
        W* const widget = window.findChild<W*>(control.fullName());
        EXPECT_NE(widget, nullptr) << control.fullName().toStdString();
        return widget;
    }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    MainWindow window{root};
};

} // namespace orvantine
