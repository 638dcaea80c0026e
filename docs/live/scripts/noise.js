'use strict';

live.panels.noise = (library) => {
  const SIDE = 256;
  const swatch = new library.Swatch(SIDE);
  const context = live.get('noise-swatch').getContext('2d');
  const shades = live.get('noise-shades');

  const update = live.addSliders(live.get('noise-sliders'), [
    {name: 'octaves', label: 'Octaves', min: 1, max: 10, step: 1, value: 5},
    {name: 'cells', label: 'Cells across', min: 1, max: 32, step: 1, value: 8},
    {name: 'depth', label: 'Slice, z', min: 0, max: 4, step: 0.01, value: 0.5},
  ], ({octaves, cells, depth}) => {
    const start = performance.now();
    swatch.evaluate(cells, depth, octaves);
    const milliseconds = performance.now() - start;
    const pixels = new Uint8ClampedArray(swatch.getPixels(shades.value === 'stripes'));
    context.putImageData(new ImageData(pixels, SIDE, SIDE), 0, 0);
    live.get('noise-value').textContent = live.format(library.getTurbulence(cells / 2, cells / 2, depth, octaves));
    live.get('noise-time').textContent = `${milliseconds.toFixed(1)} ms`;
  });
  shades.addEventListener('change', update);
};
