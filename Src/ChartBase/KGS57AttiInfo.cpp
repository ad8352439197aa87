#include "ChartBase/KGS57AttiInfo.h"

namespace KGC {

KGS57AttiInfo::~KGS57AttiInfo() {
    m_value.Clear();
}

}  // namespace KGC
