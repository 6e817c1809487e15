#pragma once

#include "shell/Protetto.h"
