// Prints one line for each part of a topic, `name hash`: a hash over the results of a fixed workload. It tells whether
// a change of the code has changed a result; whether the results are right is for the tests to say.
//
// Topics whose name starts with `machine-dependent.` go through the C library's sin, cos and pow or the processor's
// reciprocal estimates: their hashes compare on one machine only.

#include "Topics.h"

int main()
{
    digest::RunVectors();
    digest::RunTuples();
    digest::RunScalars();
    digest::RunPercentages();
    digest::RunMatrixConstruction();
    digest::RunMatrixArithmetic();
    digest::RunMatrixBuilders();
    digest::RunTransforms();
    digest::RunQuaternions();
    digest::RunAreas();
    digest::RunVolumes();
    digest::RunSpheres();
    digest::RunOrientedBoxes();
    digest::RunBounds();
    digest::RunPlanes();
    digest::RunFrusta();
    digest::RunVisibility();
    digest::RunRays();
    digest::RunRayPackets();
    digest::RunComponentwise();
    digest::RunIntersections();
    digest::RunCoordinateFrames();
    digest::RunDifferentials();
    digest::RunDirections();
    digest::RunLocalAxes();
    digest::RunViews();
    digest::RunBatchViews();
    digest::RunBatches();
    digest::RunNoise();
    digest::RunGenerators();
    digest::RunHashes();
    digest::RunBits();
    digest::RunTexts();
    digest::RunDefaults();
    digest::RunStreams();
    digest::RunReadings();
    digest::RunExceptions();
    digest::RunSamples();
    digest::RunAngles();
    digest::RunRotations();
    digest::RunTurns();
    digest::RunSphereVolumes();
    digest::RunReciprocals();
    digest::RunFieldsOfView();
}
