library ieee;
use ieee.std_logic_1164.all;
library helpers;
use helpers.helper_pkg.all;

entity Blink is
  port (clk : in std_logic; led : out std_logic_vector(1 downto 0));
end entity;

architecture rtl of Blink is
  component toggler is
    generic (DIVIDE : natural := 2);
    port (clk : in std_logic; q : out std_logic);
  end component;
  component PLL_PRIMITIVE is
    port (refclk : in std_logic; outclk : out std_logic);
  end component;
  signal fast : std_logic;
  signal pulses : std_logic_vector(WIDTH - 1 downto 0);
begin
  pll : PLL_PRIMITIVE port map (refclk => clk, outclk => fast);
  leds : for i in 0 to 1 generate
    t : toggler generic map (DIVIDE => 4 + i) port map (clk => fast, q => led(i));
  end generate;
  p : entity work.Pulse generic map (WIDTH => WIDTH)
    port map (clk => fast, start => '1', count => pulses);
end architecture;
