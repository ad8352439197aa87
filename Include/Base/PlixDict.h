// PlixDict: the platform's ordered map, a thin wrapper over std::map.
//
// Threads: as std::map: const members from several threads at once, any change by one thread
// alone.
#pragma once

#include <map>

namespace PLIX {

template <typename K, typename V>
class PlixDict {
public:
    using Map = std::map<K, V>;

    bool Lookup(const K& key, V& value) const {
        auto it = m_map.find(key);
        if (it == m_map.end()) return false;
        value = it->second;
        return true;
    }
    // Pointer to the stored value, or null; saves a copy on hot paths.
    const V* Find(const K& key) const {
        auto it = m_map.find(key);
        return it == m_map.end() ? nullptr : &it->second;
    }
    V* Find(const K& key) {
        auto it = m_map.find(key);
        return it == m_map.end() ? nullptr : &it->second;
    }
    void SetAt(const K& key, const V& value) { m_map[key] = value; }
    V& operator[](const K& key) { return m_map[key]; }
    bool RemoveKey(const K& key) { return m_map.erase(key) > 0; }
    void RemoveAll() { m_map.clear(); }
    int GetCount() const { return static_cast<int>(m_map.size()); }
    bool IsEmpty() const { return m_map.empty(); }

    typename Map::iterator begin() { return m_map.begin(); }
    typename Map::iterator end() { return m_map.end(); }
    typename Map::const_iterator begin() const { return m_map.begin(); }
    typename Map::const_iterator end() const { return m_map.end(); }

private:
    Map m_map;
};

}  // namespace PLIX
