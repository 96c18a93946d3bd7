#include "basic_views/conversion.h"

Conversion::~Conversion() = default;
