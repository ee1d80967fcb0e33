#pragma once

/// Which of many items laid out in rows are to be seen, and which one is selected. Items run from
/// left to right, then down.
class PanelGrid {
public:
    /// Takes a new shape (each 1 or more) and number of items; the selected one stays to be seen.
    void arrange(int count, int columns, int visibleRows);

    /// Selects the item so many columns to the right and rows below, as far as there are any.
    void move(int right, int down);

    void selectFirst() { select(0); }
    void selectLast() { select(m_Count - 1); }

    int columns() const { return m_Columns; }
    int selected() const { return m_Selected; }

    /// The items to be seen, from the first to before the last; and how many stand above and below.
    int first() const { return m_TopRow * m_Columns; }
    int last() const;
    int above() const { return first(); }
    int below() const { return m_Count - last(); }

private:
    void select(int item);

    int m_Count = 0;
    int m_Columns = 1;
    int m_VisibleRows = 1;
    int m_TopRow = 0;
    int m_Selected = 0;
};
