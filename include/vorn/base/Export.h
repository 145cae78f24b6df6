// Marks what the shared library exports; everything else stays hidden inside it.
#pragma once

#define VORN_API __attribute__((visibility("default")))
