// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "opendata.h"
#include "windows/viewerwindow.h"

std::unique_ptr<ViewerWindow> openData(const QString & /*text*/, const DataRequest & /*request*/,
                                       FrameStatistics * /*statistics*/)
{
    return nullptr;
}

bool canOpenData()
{
    return false;
}
