#pragma once

#include <QPointF>

#include <cstddef>
#include <iterator>
#include <vector>

namespace Terminal {

/// Places of many marks, those of each in the order in which they were appended. One list has them all, and
/// keeps its memory when it is cleared: there may be many thousand in each repaint.
class PlaceList
{
    static constexpr int end = -1;

    struct Link
    {
        /// Made where it stands: to copy one, partly just written, costs as much as finding its mark.
        explicit Link(const QPointF &where) : place(where) {}

        QPointF place;
        int next = end;
    };

public:
    /// Which places of the list are those of one mark.
    struct Chain
    {
        int first = end;
        int last = end;
    };

    class Iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = QPointF;
        using difference_type = std::ptrdiff_t;
        using pointer = const QPointF *;
        using reference = const QPointF &;

        Iterator() = default;
        Iterator(const std::vector<Link> *links, int number) : m_links(links), m_number(number) {}

        reference operator*() const { return link().place; }
        pointer operator->() const { return &link().place; }
        Iterator &operator++()
        {
            m_number = link().next;
            return *this;
        }
        Iterator operator++(int)
        {
            const Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator &other) const { return m_number == other.m_number; }
        bool operator!=(const Iterator &other) const { return m_number != other.m_number; }

    private:
        const Link &link() const { return (*m_links)[static_cast<std::size_t>(m_number)]; }

        const std::vector<Link> *m_links = nullptr;
        int m_number = PlaceList::end;
    };

    /// For a loop; valid until the next place is appended.
    class Range
    {
    public:
        Range(Iterator begin, Iterator end) : m_begin(begin), m_end(end) {}
        Iterator begin() const { return m_begin; }
        Iterator end() const { return m_end; }

    private:
        Iterator m_begin;
        Iterator m_end;
    };

    /// Ends all chains.
    void clear() { m_links.clear(); }

    void append(Chain *chain, const QPointF &place)
    {
        const auto number = static_cast<int>(m_links.size());
        if (chain->first == end) {
            chain->first = number;
        } else {
            m_links[static_cast<std::size_t>(chain->last)].next = number;
        }
        chain->last = number;
        m_links.emplace_back(place);
    }

    Range of(const Chain &chain) const { return {{&m_links, chain.first}, {&m_links, end}}; }

private:
    std::vector<Link> m_links;
};

} // namespace Terminal
