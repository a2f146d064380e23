import type { Key } from '../i18n/catalogue';
import { currentLanguage, isLanguage, languages } from '../i18n/language';
import { readLineWidth, readTextFace, readTheme, themes } from '../state/settings';
import { zoomSteps } from '../state/zoom';
import { type Setting, type SettingChoice, settingsDialog } from '../views/settingsDialog';
import { chooseLanguage, chooseTheme } from './appearance';
import { type Context, focusMain } from './context';

const faces: ReadonlyArray<SettingChoice> = [
  { value: 'sans', label: 'settings.sans' },
  { value: 'serif', label: 'settings.serif' },
  { value: 'mono', label: 'settings.mono' },
];
const widths: ReadonlyArray<SettingChoice> = [
  { value: 'narrow', label: 'settings.narrow' },
  { value: 'medium', label: 'settings.medium' },
  { value: 'wide', label: 'settings.wide' },
];

export function showSettings(context: Context): void {
  const show = settingsDialog(settingsOf(context), () => {
    stop();
    focusMain(context);
  });
  const stop = context.workspace.onChange((change) => {
    if (change === 'settings') show(settingsOf(context));
  });
}

function settingsOf(context: Context): ReadonlyArray<Setting> {
  const { workspace } = context;
  const { theme, textFace, zoom, lineWidth } = workspace.settings;
  const named = (prefix: 'theme' | 'language', values: ReadonlyArray<string>): SettingChoice[] =>
    values.map((value) => ({ value, label: `${prefix}.${value}` as Key }));
  return [
    {
      name: 'theme',
      label: 'theme.label',
      value: readTheme(theme),
      choices: named('theme', themes),
      choose: (value) => chooseTheme(context, readTheme(value)),
    },
    {
      name: 'language',
      label: 'language.label',
      value: currentLanguage(),
      choices: named('language', languages),
      choose: (value) => {
        if (isLanguage(value)) chooseLanguage(context, value);
      },
    },
    {
      name: 'face',
      label: 'settings.face',
      value: readTextFace(textFace),
      choices: faces,
      choose: (value) => workspace.setSettings({ textFace: value }),
    },
    {
      name: 'size',
      label: 'settings.size',
      value: String(zoom),
      choices: [...new Set([...zoomSteps, zoom])]
        .sort((one, other) => one - other)
        .map((step) => ({ value: String(step), label: { text: `${Math.round(step * 100)}%` } })),
      choose: (value) => workspace.setSettings({ zoom: Number(value) }),
    },
    {
      name: 'lines',
      label: 'settings.lines',
      value: readLineWidth(lineWidth),
      choices: widths,
      choose: (value) => workspace.setSettings({ lineWidth: value }),
    },
  ];
}
