// A header as none may be installed.
#pragma once

double declaredOnly(double price);
