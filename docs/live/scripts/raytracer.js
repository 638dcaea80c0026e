'use strict';

// Runs in a worker: draws the picture that a message describes, and answers with each tile.
const drawInWorker = (start) => {
  self.onmessage = async ({data: settings}) => {
    try {
      const library = await start();
      const tracer = new library.RayTracer(settings);
      const total = tracer.getTileCount();
      const begin = performance.now();
      for (let index = 0; index < total; ++index) {
        const {x, y, width, height, pixels} = tracer.draw(index);
        const copy = new Uint8ClampedArray(pixels);
        const seconds = (performance.now() - begin) / 1000;
        self.postMessage({x, y, width, height, pixels: copy, done: index + 1, total, rays: tracer.getRayCount(), seconds}, [copy.buffer]);
      }
    } catch (failure) {
      self.postMessage({failure: String(failure)});
    }
  };
};

live.panels.raytracer = () => {
  const canvas = live.get('raytracer-picture');
  const context = canvas.getContext('2d');
  const progress = live.get('raytracer-progress');
  const status = live.get('raytracer-status');
  const figures = live.get('raytracer-figures');
  const choose = (name) => live.get(`raytracer-${name}`).value;
  const count = (number) => Math.round(number).toLocaleString('en-GB');
  let worker = null;

  const end = (message) => {
    worker?.terminate();
    worker = null;
    live.get('raytracer-start').disabled = false;
    live.get('raytracer-stop').disabled = true;
    status.textContent = message;
  };

  const showTile = ({x, y, width, height, pixels, done, total, rays, seconds}) => {
    context.putImageData(new ImageData(pixels, width, height), x, y);
    progress.value = done / total;
    figures.textContent = `${done} of ${total} tiles, ${count(rays)} rays in ${seconds.toFixed(1)} s: ${count(rays / seconds)} rays per second`;
    if (done === total) {
      canvas.setAttribute('aria-label', `The ${choose('mesh')}, drawn`);
      end('The picture is drawn.');
    }
  };

  live.get('raytracer-start').addEventListener('click', () => {
    const [width, height] = choose('size').split('x').map(Number);
    canvas.width = width;
    canvas.height = height;
    progress.value = 0;
    figures.textContent = '';
    status.textContent = 'Drawing…';
    live.get('raytracer-start').disabled = true;
    live.get('raytracer-stop').disabled = false;
    live.get('raytracer-stop').focus();
    worker = live.makeWorker(bvPanels, drawInWorker);
    worker.onmessage = ({data}) => data.failure === undefined ? showTile(data) : end(`It failed: ${data.failure}`);
    worker.onerror = (event) => end(`It failed: ${event.message}`);
    worker.postMessage({
      mesh: choose('mesh'), material: choose('material'), floor: choose('floor'), spheres: Number(choose('spheres')), width, height,
      samples: Number(choose('samples')), skyRays: Number(choose('sky-rays')), packet: choose('packet')});
  });
  live.get('raytracer-stop').addEventListener('click', () => {
    end('Stopped.');
    live.get('raytracer-start').focus();
  });
};
