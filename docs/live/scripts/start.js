'use strict';

// Shows the panels instead of their pictures, once the library is there. Where it cannot run, the pictures stay.
(async () => {
  const note = live.get('start-note');
  if (typeof WebAssembly !== 'object') {
    note.textContent = 'This browser runs no WebAssembly, so pictures stand in for what is live elsewhere.';
    return;
  }
  try {
    const library = await bvPanels()();
    for (const [name, start] of Object.entries(live.panels)) {
      const section = live.get(name);
      section.querySelector('.panel').hidden = false;
      start(library);
      section.querySelector('.instead').hidden = true;
    }
    document.documentElement.dataset.live = 'ready';
  } catch (failure) {
    console.error(failure);
    note.textContent = 'The library could not be started here, so pictures stand in for what is live elsewhere.';
  }
})();
