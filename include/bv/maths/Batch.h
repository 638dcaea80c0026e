#pragma once

/// @file
/// Operations on arrays: element by element, they give the bits of the single forms, at the width of the processor's
/// vectors.
///
/// A batch form has a name of its own: a verb, and what it works on. The processor is asked once, by the first call:
/// the same library runs on every processor and uses AVX2 or AVX-512 on those that have it. Which of them it is makes
/// no difference to a result, but for the sign and the payload of NaN.
///
/// The same for all of these functions:
/// - Points, directions, boxes, spheres and rays are taken wherever they lie: see bv/maths/batch/Views.h. An array, a
///   `std::vector` or a `std::span` of them is one, of course.
/// - Results are as many as the arguments; any other length is an InvalidArgumentException, and nothing is written. No
///   element is fine.
/// - Results of the same type as the arguments may overwrite them: the same view may be both. Any other overlap of what
///   is written with what is read or written is an error, which debug builds of the library stop at where they see it,
///   through Assert(), and which other builds do not look for.
/// - Floating-point exceptions may be flagged that the single form does not raise, as lanes compute what is not kept.
/// - Addresses need the alignment of their element types and no more.
/// - Nothing is allocated or kept.

#include "bv/maths/batch/Bounds.h"
#include "bv/maths/batch/Numbers.h"
#include "bv/maths/batch/Rays.h"
#include "bv/maths/batch/Transforms.h"
#include "bv/maths/batch/Views.h"
