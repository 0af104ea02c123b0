// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "opendata.h"

#include "datawindow.h"

std::unique_ptr<ViewerWindow> openData(const QString &text, const DataRequest &request,
                                       FrameStatistics *statistics)
{
    QString problem;
    auto source = DataSource::fromText(text, &problem);
    if (!source || !problem.isEmpty())
        return nullptr;
    if (!request.table.isEmpty())
        source->table = request.table;
    if (!request.sql.isEmpty())
        source->sql = request.sql;
    if (!request.key.isEmpty())
        source->key = request.key;
    return std::make_unique<DataWindow>(*source, statistics);
}

bool canOpenData()
{
    return true;
}
