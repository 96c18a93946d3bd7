#pragma once

#include "plot2d/plot.h"
