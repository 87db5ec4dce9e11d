#pragma once

#include "flow/resource.h"
#include "language/expression.h"

#include <string>
#include <vector>

class cSymbols;

/// `candidates` by ascending value of `key`; equal ones stay in order. Takes a copy: a key that asks the host may
/// change the list that it came from.
///
/// The key of a resource is worked out anew at each compare, with the resource in hand: once for the candidate and once
/// for each resource that it is compared with, from the front. So a key that draws random numbers takes as many, and
/// models rely on it.
/// @param owner the name of the element on whose behalf `key` runs.
cResList orderedByKey(cResList candidates, const cExpression& key, const std::string& owner, cSymbols& symbols);

/// The value of `key` with `resource` in hand.
double keyOf(cRes& resource, const cExpression& key, const std::string& owner, cSymbols& symbols);
