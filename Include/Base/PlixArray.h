// PlixArray: the platform's growable array of values, a thin wrapper over std::vector.
//
// Threads: as std::vector: const members from several threads at once, any change by one thread
// alone.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <utility>
#include <vector>

namespace PLIX {

template <typename T>
class PlixArray {
public:
    PlixArray() = default;

    int GetSize() const { return static_cast<int>(m_items.size()); }
    int GetCount() const { return GetSize(); }
    bool IsEmpty() const { return m_items.empty(); }
    int GetUpperBound() const { return GetSize() - 1; }

    // Resizes to n elements (new ones value-initialised); growBy -1 keeps the current step.
    void SetSize(int n, int growBy = -1) {
        if (growBy >= 0) m_growBy = growBy;
        m_items.resize(n < 0 ? 0 : static_cast<size_t>(n));
    }
    int GetGrowBy() const { return m_growBy; }

    int Add(const T& item) {
        m_items.push_back(item);
        return GetSize() - 1;
    }
    int Add(T&& item) {
        m_items.push_back(std::move(item));
        return GetSize() - 1;
    }

    const T& GetAt(int i) const { return at(i); }
    T& GetAt(int i) { return at(i); }
    T& ElementAt(int i) { return at(i); }
    void SetAt(int i, const T& item) { at(i) = item; }
    T& operator[](int i) { return at(i); }
    const T& operator[](int i) const { return at(i); }

    void InsertAt(int i, const T& item, int count = 1) {
        if (count <= 0) return;
        size_t pos = clampIndex(i);
        m_items.insert(m_items.begin() + static_cast<std::ptrdiff_t>(pos),
                       static_cast<size_t>(count), item);
    }
    void RemoveAt(int i, int count = 1) {
        if (i < 0 || count <= 0 || i >= GetSize()) return;
        size_t last = std::min(m_items.size(), static_cast<size_t>(i) + static_cast<size_t>(count));
        m_items.erase(m_items.begin() + i, m_items.begin() + static_cast<std::ptrdiff_t>(last));
    }
    void RemoveAll() { m_items.clear(); }

    // Appends other's elements; returns the index of the first appended one.
    int Append(const PlixArray& other) {
        int first = GetSize();
        if (&other == this) {
            std::vector<T> copy(other.m_items);
            m_items.insert(m_items.end(), copy.begin(), copy.end());
        } else {
            m_items.insert(m_items.end(), other.m_items.begin(), other.m_items.end());
        }
        return first;
    }
    void Copy(const PlixArray& other) {
        if (&other != this) *this = other;
    }

    T* GetData() { return m_items.data(); }
    const T* GetData() const { return m_items.data(); }
    typename std::vector<T>::iterator begin() { return m_items.begin(); }
    typename std::vector<T>::iterator end() { return m_items.end(); }
    typename std::vector<T>::const_iterator begin() const { return m_items.begin(); }
    typename std::vector<T>::const_iterator end() const { return m_items.end(); }
    std::vector<T>& Items() { return m_items; }
    const std::vector<T>& Items() const { return m_items; }

private:
    T& at(int i) {
        assert(i >= 0 && i < GetSize());
        return m_items[static_cast<size_t>(i)];
    }
    const T& at(int i) const {
        assert(i >= 0 && i < GetSize());
        return m_items[static_cast<size_t>(i)];
    }
    size_t clampIndex(int i) const {
        if (i < 0) return 0;
        return std::min(m_items.size(), static_cast<size_t>(i));
    }

    std::vector<T> m_items;
    int m_growBy = -1;
};

}  // namespace PLIX
