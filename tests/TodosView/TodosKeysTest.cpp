#include "TodosView/TodosKeysTest.h"
