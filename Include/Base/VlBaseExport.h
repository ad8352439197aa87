// Symbol export macro of libVlBase: everything is hidden unless marked.
#pragma once

#define VLBASE_API __attribute__((visibility("default")))
