// Symbol export macro of libVlChartBase: everything is hidden unless marked.
#pragma once

#define VLCHARTBASE_API __attribute__((visibility("default")))
