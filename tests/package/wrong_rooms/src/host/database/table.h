#include "directory/names.h"
