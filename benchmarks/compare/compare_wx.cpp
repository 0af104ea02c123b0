// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// wxDataViewCtrl, which is GTK 3's tree view, under the same feed: compare_wx wxDataViewCtrl
// SCENARIO ROWS RATE SECONDS.

#include "driver.h"

#include <wx/app.h>
#include <wx/dataview.h>
#include <wx/frame.h>
#include <wx/settings.h>
#include <wx/timer.h>

#include <glib-object.h>

#include <cstdio>
#include <memory>

namespace {

class FeedModel : public wxDataViewVirtualListModel
{
public:
    explicit FeedModel(Contents *contents)
        : wxDataViewVirtualListModel(unsigned(contents->rows()))
        , m_contents(contents)
    {
    }

    void GetValueByRow(wxVariant &value, unsigned row, unsigned column) const override
    {
        const std::string text = m_contents->text(m_contents->numberAt(int(row)), int(column));
        value = wxString::FromAscii(text.data(), text.size());
    }
    bool SetValueByRow(const wxVariant &, unsigned, unsigned) override { return false; }
    bool GetAttrByRow(unsigned, unsigned column, wxDataViewItemAttr &attributes) const override
    {
        if (!Contents::isGreen(int(column)))
            return false;
        attributes.SetColour(wxColour(0, 96, 0));
        return true;
    }

private:
    const Contents *m_contents;
};

class WxTable : public Table
{
public:
    WxTable(wxDataViewCtrl *view, FeedModel *model, Contents *contents)
        : m_view(view)
        , m_model(model)
        , m_contents(contents)
    {
    }

    // The model can tell of one row or of all.
    void rowsAppended(int count) override
    {
        for (int row = 0; row < count; ++row)
            m_model->RowAppended();
    }
    void rowsInsertedAbove(int count) override
    {
        for (int row = 0; row < count; ++row)
            m_model->RowPrepended();
    }
    void cellChanged(int position, int column) override
    {
        m_model->RowValueChanged(unsigned(position), unsigned(column));
    }
    void showRow(int position) override
    {
        m_shown = position;
        m_view->EnsureVisible(m_model->GetItem(unsigned(position)));
    }
    void showEnd() override { showRow(m_contents->rows() - 1); }
    // The tree moves when it is idle; where it is before that says nothing.
    void scrollRows(int count) override { showRow(m_shown + count); }
    void scrollPages(int count) override
    {
        if (m_pageRows == 0)
            m_pageRows = positionOfLast() - positionOfFirst();
        scrollRows(count * m_pageRows);
    }
    void keepEnd() override { showEnd(); }
    int firstInView() override { return m_contents->numberAt(positionOfFirst()); }
    int lastInView() override { return m_contents->numberAt(positionOfLast()); }

private:
    int positionOfFirst() const
    {
        const wxDataViewItem first = m_view->GetTopItem();
        return first.IsOk() ? int(m_model->GetRow(first)) : -1;
    }
    int positionOfLast() const
    {
        int last = positionOfFirst();
        while (last >= 0 && last + 1 < m_contents->rows() && isInView(last + 1))
            ++last;
        return last;
    }
    bool isInView(int position) const
    {
        const int end = m_view->GetClientSize().GetHeight()
            - wxSystemSettings::GetMetric(wxSYS_HSCROLL_Y, m_view);
        const wxRect place = m_view->GetItemRect(m_model->GetItem(unsigned(position)));
        return !place.IsEmpty() && place.GetBottom() < end;
    }

    wxDataViewCtrl *m_view;
    FeedModel *m_model;
    Contents *m_contents;
    int m_shown = 0; //!< the position that was last asked to be in view
    int m_pageRows = 0;
};

//! GTK draws the window from the top whenever any part of it has to be drawn. Its headers are not
//! needed for that.
gboolean countFrame(void *, void *, void *driver)
{
    static_cast<Driver *>(driver)->framePresented();
    return FALSE;
}

class CompareApp : public wxApp
{
public:
    bool OnInit() override;
    int OnRun() override
    {
        wxApp::OnRun();
        return m_driver->status();
    }

private:
    void tick()
    {
        if (!m_driver->tick())
            ExitMainLoop();
    }

    std::unique_ptr<Contents> m_contents;
    std::unique_ptr<WxTable> m_table;
    std::unique_ptr<Driver> m_driver;
    wxTimer m_timer;
};

wxDataViewCtrl *makeView(wxWindow *parent, FeedModel *model)
{
    auto *view = new wxDataViewCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                    wxDV_SINGLE | wxBORDER_NONE);
    for (unsigned column = 0; column < unsigned(Contents::columns); ++column) {
        auto *renderer = new wxDataViewTextRenderer(
            wxDataViewTextRenderer::GetDefaultType(), wxDATAVIEW_CELL_INERT,
            Contents::isRightAligned(int(column)) ? wxALIGN_RIGHT : wxALIGN_LEFT);
        renderer->EnableEllipsize(wxELLIPSIZE_END);
        view->AppendColumn(new wxDataViewColumn(wxString::Format("%u", column + 1), renderer,
                                                column, Contents::columnWidth));
    }
    view->AssociateModel(model);
    model->DecRef(); // the view has its own
    return view;
}

bool CompareApp::OnInit()
{
    const Request request(argc, argv);
    m_contents = std::make_unique<Contents>(request.rows);
    auto *model = new FeedModel(m_contents.get());
    auto *frame = new wxFrame(nullptr, wxID_ANY, "compare", wxDefaultPosition, wxSize(1280, 800),
                              wxBORDER_NONE);
    wxDataViewCtrl *view = makeView(frame, model);
    view->SetFont(wxFontInfo(9).FaceName("DejaVu Sans"));
    view->SetRowHeight(Contents::rowHeight - 2); // GTK leaves two pixels between rows
    m_table = std::make_unique<WxTable>(view, model, m_contents.get());
    m_driver = std::make_unique<Driver>(request, m_contents.get());
    m_driver->setTable(m_table.get());
    g_signal_connect_after(frame->GetHandle(), "draw", G_CALLBACK(countFrame), m_driver.get());
    frame->Show();
    m_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent &) { tick(); });
    m_timer.Start(Driver::interval);
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    wxApp::SetInstance(new CompareApp); // which wxEntry() deletes
    return wxEntry(argc, argv);
}
