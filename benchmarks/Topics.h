#pragma once

/// @file
/// One function for each topic and side that adds its rows.

namespace bench
{

void AddBatch();
void AddBounds();
void AddBox();
void AddComponentwise();
void AddDirection();
void AddFrustum();
void AddGenerator();
void AddHash();
void AddIntersect();
void AddMatrix();
void AddNoise();
void AddQuaternion();
void AddRay();
void AddSampling();
void AddScalar();
void AddScene();
void AddSphere();
void AddString();
void AddTransform();
void AddVisibility();
void AddView();

namespace peers
{

void AddBatch();
void AddBounds();
void AddBox();
void AddComponentwise();
void AddDirection();
void AddFrustum();
void AddGenerator();
void AddHash();
void AddIntersect();
void AddMatrix();
void AddNoise();
void AddQuaternion();
void AddRay();
void AddSampling();
void AddScalar();
void AddScene();
void AddSphere();
void AddString();
void AddTransform();
void AddVisibility();
void AddView();

} // namespace peers

/// GLM as it comes, and with its intrinsics: the same rows compiled twice.
namespace glm_plain
{
void Add();
}
namespace glm_intrinsics
{
void Add();
}

} // namespace bench
