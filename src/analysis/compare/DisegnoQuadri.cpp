#include "analysis/compare/DisegnoQuadri.h"
