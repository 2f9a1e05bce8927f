#pragma once

// The kernel has no global tolerance: each test takes a length from its caller or one of these.
// Comparison is absolute, never relative to the operands, and whether a test says < or <= is part
// of its contract.

/// 2^-23: where a caller means as exact as possible. The default of most tolerance arguments.
inline constexpr double kGeEpsilon = 1.1920928955078125e-07;
/// Lengths and directions that are visibly equal in drawing units.
inline constexpr double kGeTol = 0.001;

/// Two points nearer than this are == .
inline constexpr double kGePointTol = 1e-06;
/// A segment whose ends lie this near another one is contained in it and does not cross it.
inline constexpr double kGeContainedTol = 1e-06;
/// Lines whose denominator (a product of squared lengths) is not above this are parallel.
inline constexpr double kGeParallelDenominator = 2.220446049250313e-16;
/// A line whose ends differ by less in x mirrors as a vertical one.
inline constexpr double kGeVerticalTol = 0.001;
/// Half the length of a perpendicular line, in lengths of the line it belongs to.
inline constexpr double kGePerpHalfLength = 1e9;

/// Tessellation of elliptical arcs.
inline constexpr double kGeEllipCacheTol = 1e-07;
/// Closing a polyline: what counts as the same end, and as an arc's start.
inline constexpr double kGeSetClosedTol = 1e-05;
inline constexpr double kGeSetClosedArcTol = 0.01;
/// Ends of a polyline that are this near close it.
inline constexpr double kGeClosedTol = 0.002;
/// Ends of a spline that are this near close or join it.
inline constexpr double kGeSplineClosedTol = 0.02;
/// The parameter that stands for the end of a chain where a normal is wanted.
inline constexpr double kGeNormalEndParam = 0.999;
/// Hits of a polyline are sorted by their parameter, cut to steps of one by this.
inline constexpr double kGeSortKeySteps = 1e8;
