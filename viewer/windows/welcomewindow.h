// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef WELCOMEWINDOW_H
#define WELCOMEWINDOW_H

#include "viewerwindow.h"

class QVBoxLayout;

//! What is shown when nothing is opened yet: ways to open something.
class WelcomeWindow : public ViewerWindow
{
    Q_OBJECT

public:
    explicit WelcomeWindow(FrameStatistics *statistics);

private:
    void addTexts(QVBoxLayout *layout);
    void addButtons(QVBoxLayout *layout);
    void addRecentFiles(QVBoxLayout *layout);
};

#endif // WELCOMEWINDOW_H
