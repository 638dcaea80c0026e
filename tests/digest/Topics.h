#pragma once

/// @file
/// The topics: each prints its lines, in a file of its own.

namespace digest
{

void RunVectors();
void RunTuples();
void RunScalars();
void RunPercentages();
void RunMatrixConstruction();
void RunMatrixArithmetic();
void RunMatrixBuilders();
void RunTransforms();
void RunQuaternions();
void RunAreas();
void RunVolumes();
void RunSpheres();
void RunOrientedBoxes();
void RunBounds();
void RunPlanes();
void RunFrusta();
void RunVisibility();
void RunRays();
void RunRayPackets();
void RunComponentwise();
void RunIntersections();
void RunCoordinateFrames();
void RunDifferentials();
void RunDirections();
void RunLocalAxes();
void RunViews();
void RunBatchViews();
void RunBatches();
void RunNoise();
void RunGenerators();
void RunHashes();
void RunBits();
void RunTexts();
void RunDefaults();
void RunStreams();
void RunReadings();
void RunExceptions();
void RunSamples();
void RunAngles();
void RunRotations();
void RunTurns();
void RunSphereVolumes();
void RunReciprocals();
void RunFieldsOfView();

} // namespace digest
