#pragma once

#include "host/IForm.h"

#include <vector>

// The controls of a form in the order of the Tab key. Those that it passes over, such as labels, keep their places:
// a label leads to what comes behind it.
std::vector<Ref<IControle>> EmOrdemDeTab(const IForm &form);
