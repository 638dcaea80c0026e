'use strict';

live.panels.frustum = (library) => {
  const views = [
    {svg: live.get('frustum-top'), part: [-10, -17, 20, 20], flatten: ([x, , z]) => [x, z]},
    {svg: live.get('frustum-side'), part: [-3, -6, 20, 12], flatten: ([, y, z]) => [-z, -y]},
  ];
  // Corners of the view by plane: bit 0 of a corner's number is right, bit 1 top and bit 2 far.
  const faces = {left: [0, 2, 6, 4], right: [1, 3, 7, 5], bottom: [0, 1, 5, 4], top: [2, 3, 7, 6], near: [0, 1, 3, 2], far: [4, 5, 7, 6]};
  const points = (corners) => corners.map((corner) => corner.join(',')).join(' ');

  const tell = ({highest, lowest}) => highest < 0 ? 'outside' : lowest < 0 ? 'straddling' : 'inside';

  const drawView = ({svg, part, flatten}, {planes, corners, low, high}) => {
    svg.replaceChildren();
    const byVerdict = [...planes].sort((a, b) => (b.highest < 0 ? 0 : 1) - (a.highest < 0 ? 0 : 1)); // those that reject on top
    for (const {name, highest} of byVerdict) {
      const face = faces[name].map((index) => flatten(corners[index]));
      live.draw(svg, 'polygon', highest < 0 ? 'plane rejects' : 'plane', {points: points(face)});
    }
    const [a, b] = [flatten(low), flatten(high)];
    live.fit(svg, part, [a, b, ...corners.map(flatten)]);
    live.draw(svg, 'rect', 'box', {
      x: Math.min(a[0], b[0]), y: Math.min(a[1], b[1]), width: Math.abs(b[0] - a[0]), height: Math.abs(b[1] - a[1])});
    live.draw(svg, 'circle', 'eye', {cx: 0, cy: 0, r: 0.15});
  };

  const show = (values) => {
    const camera = {turn: values.turn, fieldOfView: values.fieldOfView, near: values.near, far: values.far};
    const description = library.classifyBox(camera, {x: values.x, y: values.y, z: values.z, size: values.size});
    live.get('frustum-failure').textContent = description.failure;
    if (description.failure !== '')
      return;
    live.get('frustum-result').textContent = description.result;
    live.setRows(live.get('frustum-planes'), description.planes.map((plane) => [
      plane.name, tell(plane), live.format(plane.highest), live.format(plane.lowest), live.formatVector(plane.normal),
      live.format(plane.offset)]));
    for (const view of views)
      drawView(view, description);
  };

  live.addSliders(live.get('frustum-sliders'), [
    {name: 'fieldOfView', label: 'Field of view, degrees', min: 20, max: 90, step: 1, value: 50},
    {name: 'turn', label: 'Turn to the right, degrees', min: -60, max: 60, step: 1, value: 0},
    {name: 'near', label: 'Near plane', min: 0.5, max: 5, step: 0.1, value: 1},
    {name: 'far', label: 'Far plane', min: 6, max: 15, step: 0.1, value: 12},
    {name: 'x', label: 'Box, x', min: -8, max: 8, step: 0.1, value: 3},
    {name: 'y', label: 'Box, y', min: -5, max: 5, step: 0.1, value: 0},
    {name: 'z', label: 'Box, z', min: -15, max: 3, step: 0.1, value: -6},
    {name: 'size', label: 'Box, size', min: 0.2, max: 6, step: 0.1, value: 2},
  ], show);
};
