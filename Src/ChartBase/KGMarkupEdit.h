// Internal to libVlChartBase: an edit of a document that is kept only once it is saved.
#pragma once

#include <utility>

#include "Base/KGMarkup.h"

namespace KGC {

// Copies the document when an edit begins; unless Save succeeds, the destructor puts the copy
// back, so that an edit whose save fails leaves the document exactly as it was and memory never
// holds what the file does not. Declare it after anything that moves the cursor on exit, so
// that the restore happens first.
class KGMarkupEdit {
public:
    explicit KGMarkupEdit(KGMarkup& doc) : m_doc(doc), m_before(doc.Clone()) {}
    ~KGMarkupEdit() {
        if (!m_saved) m_doc = std::move(m_before);
    }
    KGMarkupEdit(const KGMarkupEdit&) = delete;
    KGMarkupEdit& operator=(const KGMarkupEdit&) = delete;

    bool Save(const PLIX::PlixUnicodeString& path) {
        m_saved = m_doc.Save(path);
        return m_saved;
    }

private:
    KGMarkup& m_doc;
    KGMarkup m_before;
    bool m_saved = false;
};

}  // namespace KGC
