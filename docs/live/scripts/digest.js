'use strict';

// Runs in a worker: answers with each line that the digest prints, and with nothing at its end.
const computeInWorker = (start) => {
  const print = (line) => self.postMessage(line);
  start({print}).then(() => self.postMessage(null), (failure) => { throw failure; });
};

live.panels.digest = () => {
  const record = new Map(bvRecord.split('\n').map((line) => line.split(' ')));
  const rows = live.get('digest-topics');
  const progress = live.get('digest-progress');
  const status = live.get('digest-status');
  const button = live.get('digest-start');
  const MAY_DIFFER = 'machine-dependent.';

  live.setRows(rows, [...record].map(([topic, hash]) => [topic, '', hash, '']));
  for (const {firstChild: topic} of rows.children) // a line of its own for each part, where it is narrow
    topic.replaceChildren(...topic.textContent.split(/(?<=\.)/).flatMap((part) => [part, document.createElement('wbr')]));
  const cells = new Map([...record.keys()].map((topic, index) => [topic, rows.children[index].children]));

  const summarise = (here) => {
    let same = 0;
    let excused = 0;
    for (const [topic, hash] of record) {
      if (here.get(topic) === hash)
        ++same;
      else if (topic.startsWith(MAY_DIFFER))
        ++excused;
    }
    const wrong = record.size - same - excused;
    status.textContent = `${same} of ${record.size} topics are the same, ${excused} that may differ do, ${wrong} ${wrong === 1 ? 'is' : 'are'} wrong.`;
    status.className = wrong === 0 ? 'value good' : 'value warning';
  };

  button.addEventListener('click', () => {
    const here = new Map();
    button.disabled = true;
    progress.value = 0;
    status.className = 'value';
    status.textContent = 'Computing…';
    for (const topic of cells.values())
      topic[1].textContent = topic[3].textContent = '';
    const worker = live.makeWorker(bvDigest, computeInWorker);
    const end = () => {
      worker.terminate();
      button.disabled = false;
    };
    worker.onerror = (event) => {
      status.textContent = `It failed: ${event.message}`;
      end();
    };
    worker.onmessage = ({data: line}) => {
      if (line === null) {
        summarise(here);
        end();
        return;
      }
      const [topic, hash] = line.split(' ');
      here.set(topic, hash);
      progress.value = here.size / record.size;
      const row = cells.get(topic);
      if (!row)
        return;
      const isSame = record.get(topic) === hash;
      row[3].textContent = hash;
      row[1].textContent = isSame ? 'yes' : topic.startsWith(MAY_DIFFER) ? 'no, may differ' : 'no';
      row[1].className = isSame ? 'good' : 'warning';
    };
  });
};
