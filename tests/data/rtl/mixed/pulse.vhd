library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity Pulse is
  generic (WIDTH : natural := 4);
  port (clk   : in  std_logic;
        start : in  std_logic;
        count : out std_logic_vector(WIDTH - 1 downto 0));
end entity;

architecture rtl of Pulse is
  signal value : unsigned(WIDTH - 1 downto 0) := (others => '0');
begin
  -- synthesis translate_off
  assert false report "simulating" severity nonsense;
  -- synthesis translate_on
  process (clk)
  begin
    if rising_edge(clk) then
      if start = '1' then
        value <= value + 1;
      end if;
    end if;
  end process;
  count <= std_logic_vector(value);
end architecture;
