// The base imaging library and the system services, as this library sees them.
// A platform with another base library of the same interface changes only this file.
#pragma once

#include <base/archive.h>
#include <base/exception.h>
#include <base/geometry.h>
#include <base/pel_buffer.h>
#include <base/persistence.h>
#include <vsys/attention.h>
